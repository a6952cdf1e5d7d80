#pragma once

#include "platform/FileDialog.hpp"
#include "platform/Machine.hpp"
#include "platform/MessageBoxes.hpp"
#include "platform/ViewerStarter.hpp"

namespace Tamber {

/// All that the windows need of a desktop besides being windows.
class Platform : public Machine {
  public:
    virtual MessageBoxes& Boxes() = 0;
    virtual ViewerStarter& Viewer() = 0;
    virtual std::unique_ptr<FileDialog> NewFileDialog() = 0;
};

}  // namespace Tamber
