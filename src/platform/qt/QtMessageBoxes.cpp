#include "platform/qt/QtMessageBoxes.hpp"

#include <QGridLayout>
#include <QMessageBox>
#include <QSpacerItem>

#include "platform/qt/ModalDialog.hpp"

namespace Tamber {
namespace {

constexpr int FewestPixels = 280;

}  // namespace

void QtMessageBoxes::Show(const std::string& text, const std::string& title, BoxIcon icon) {
    QMessageBox box(icon == BoxIcon::Critical ? QMessageBox::Critical : QMessageBox::NoIcon,
                    QString::fromStdString(title), QString::fromStdString(text), QMessageBox::Ok,
                    OwnerForDialogs());
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A box takes its width from its text alone; a spacer keeps a short one from cutting off its
    // title.
    if (auto* layout = qobject_cast<QGridLayout*>(box.layout()))
        layout->addItem(new QSpacerItem(FewestPixels, 0), layout->rowCount(), 0, 1,
                        layout->columnCount());
    ExecuteModal(box);
}

}  // namespace Tamber
