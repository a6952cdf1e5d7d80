#include "platform/qt/ModalDialog.hpp"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>

namespace Tamber {

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
    if (owner)
        dialog.setWindowModality(Qt::WindowModal);
    const int result = dialog.exec();
    if (owner && owner->isVisible())
        owner->activateWindow();
    return result;
}

}  // namespace Tamber
