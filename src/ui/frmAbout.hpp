#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <utility>

#include "platform/Platform.hpp"

class QLabel;

namespace Tamber {

/// The about box, which is the splash of the program's start too. It closes itself after three
/// seconds, earlier at a click on its background or at Escape, Enter or Space.
class frmAbout : public QDialog {
  public:
    /// Its three seconds begin here. `closed` runs, once, when the box has gone from the screen.
    frmAbout(QWidget* owner, Platform& platform, std::function<void()> closed = {});

    /// `act` runs, once, when the box has been painted.
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
