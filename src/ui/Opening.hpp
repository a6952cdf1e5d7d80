#pragma once

#include <QObject>
#include <memory>

#include "modFunc.hpp"
#include "ui/frmAbout.hpp"
#include "ui/mdiMain.hpp"

namespace Tamber {

/// The order in which the windows appear: the splash and, after it has gone, the main window; and
/// the end of both when the system asks for it. Needs a QApplication that outlives it.
class Opening final : public QObject {
  public:
    Opening(modFunc& program, Platform& platform);

    /// Shows the splash. The rest happens in the event loop.
    void Begin();

    /// Ends the program, whatever it is at: see mdiMain::EndProgram.
    void End();

    /// The end of the desktop session reaches a program as the application's Quit event.
    bool eventFilter(QObject* application, QEvent* event) override;

  private:
    void ShowMainWindow();

    modFunc& program_;
    Platform& platform_;
    std::unique_ptr<mdiMain> window_;
    frmAbout splash_;
};

}  // namespace Tamber
