#pragma once

#include <memory>

#include "platform/EventDelivery.hpp"
#include "platform/FileDialog.hpp"
#include "platform/MessageBoxes.hpp"
#include "platform/SerialControl.hpp"
#include "platform/ViewerStarter.hpp"
#include "platform/WindowTimer.hpp"

namespace Tamber {

/// All that the windows need of a desktop besides being windows. It outlives everything it makes.
class Platform {
  public:
    virtual ~Platform() = default;

    virtual EventDelivery& Events() = 0;
    virtual MessageBoxes& Boxes() = 0;
    virtual ViewerStarter& Viewer() = 0;
    virtual std::unique_ptr<WindowTimer> NewTimer() = 0;
    virtual std::unique_ptr<SerialControl> NewSerialControl() = 0;
    virtual std::unique_ptr<FileDialog> NewFileDialog() = 0;
};

}  // namespace Tamber
