#include "platform/qt/ModalDialog.hpp"

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>
#include <chrono>
#include <cstring>
#include <optional>

namespace Tamber {
namespace {

// A click or a restored owner makes an X desktop give the keyboard to the owner, which is blocked
// and drops every key. Qt asks for the dialog at once, but with the time of an earlier event, and
// window managers turn that down. So the dialog is asked for again a moment later.
class KeyboardReturn final : public QAbstractNativeEventFilter {
  public:
    KeyboardReturn(const QWidget& owner, QDialog& dialog) : owner_(owner), dialog_(dialog) {
        qApp->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr*) override {
        if (kind == "xcb_generic_event_t" && IsFocusInOfOwner(message))
            QTimer::singleShot(std::chrono::milliseconds(50), &dialog_,
                               [this] { dialog_.activateWindow(); });
        return false;
    }

  private:
    // The X protocol's FocusIn: its code, 9, in the first byte, the window in bytes 4 to 7.
    bool IsFocusInOfOwner(const void* message) const {
        constexpr unsigned focusIn = 9;
        unsigned char event[8];
        std::memcpy(event, message, sizeof event);
        quint32 window = 0;
        std::memcpy(&window, event + 4, sizeof window);
        return (event[0] & 0x7FU) == focusIn && window == owner_.effectiveWinId();
    }

    const QWidget& owner_;
    QDialog& dialog_;
};

}  // namespace

QWidget* OwnerForDialogs() {
    if (QWidget* modal = QApplication::activeModalWidget(); modal && modal->isVisible())
        return modal;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->inherits("QMainWindow"))
            return window;
    return nullptr;
}

int ExecuteModal(QDialog& dialog) {
    const QPointer<QWidget> owner = dialog.parentWidget();
    QTimer::singleShot(0, &dialog, [&dialog] {
        dialog.raise();
        dialog.activateWindow();
    });
    std::optional<KeyboardReturn> keyboard;
    if (owner) {
        dialog.setWindowModality(Qt::WindowModal);
        keyboard.emplace(*owner->window(), dialog);
    }
    const int result = dialog.exec();
    if (owner && owner->isVisible())
        owner->activateWindow();
    return result;
}

}  // namespace Tamber
