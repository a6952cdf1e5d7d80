#include "platform/qt/QtMessageBoxes.hpp"

#include <QApplication>
#include <QMessageBox>

#include "platform/qt/ModalDialog.hpp"

namespace Tamber {

void QtMessageBoxes::Show(const std::string& text, const std::string& title, BoxIcon icon) {
    QMessageBox box(icon == BoxIcon::Critical ? QMessageBox::Critical : QMessageBox::NoIcon,
                    QString::fromStdString(title), QString::fromStdString(text), QMessageBox::Ok,
                    OwnerForDialogs());
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    ExecuteModal(box);
}

}  // namespace Tamber
