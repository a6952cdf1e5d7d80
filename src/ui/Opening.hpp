#pragma once

#include <memory>

#include "modFunc.hpp"
#include "ui/frmAbout.hpp"
#include "ui/mdiMain.hpp"

namespace Tamber {

/// The order in which the windows appear: the splash and, after it has gone, the main window.
class Opening {
  public:
    Opening(modFunc& program, Platform& platform);

    /// Shows the splash. The rest happens in the event loop.
    void Begin();

  private:
    void ShowMainWindow();

    modFunc& program_;
    Platform& platform_;
    std::unique_ptr<mdiMain> window_;
    frmAbout splash_;
};

}  // namespace Tamber
