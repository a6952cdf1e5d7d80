#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <utility>

#include "platform/Platform.hpp"

class QLabel;

namespace Tamber {

/// The about box, which is also the splash at the program's start. It closes itself after three
/// seconds, or earlier at a click on its background or at Escape, Enter or Space.
class frmAbout : public QDialog {
  public:
    /// The three seconds begin here. `closed` runs once, after the box has left the screen.
    frmAbout(QWidget* owner, Platform& platform, std::function<void()> closed = {});

    /// `act` runs once, after the box has been painted.
    void OnceOnScreen(std::function<void()> act) { onceOnScreen_ = std::move(act); }

    /// Shows the box modally over its owner and returns when it has closed.
    void ShowModally();

    void reject() override;

  protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void MakeControls();
    void tmrShow_Timer();
    void ComesOnScreen();

    QLabel* image_ = nullptr;
    std::unique_ptr<WindowTimer> tmrShow;
    std::function<void()> closed_;
    std::function<void()> onceOnScreen_;
    bool onScreen_ = false;
    bool done_ = false;
};

}  // namespace Tamber
