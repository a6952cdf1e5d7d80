#include "platform/qt/QtMessageBoxes.hpp"

#include <QGridLayout>
#include <QMessageBox>
#include <QSpacerItem>

#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

constexpr int FewestPixels = 280;

// The breaks between lines are the program's own; anything else may come from outside.
QString Lines(const std::string& text) {
    QStringList lines;
    for (QString line : QString::fromStdString(text).split('\n')) {
        if (line.endsWith('\r'))
            line.chop(1);
        lines.append(OutsideText(line.toStdString()));
    }
    return lines.join('\n');
}

}  // namespace

void QtMessageBoxes::Show(const std::string& text, const std::string& title, BoxIcon icon) {
    QMessageBox box(icon == BoxIcon::Critical ? QMessageBox::Critical : QMessageBox::NoIcon,
                    QString::fromStdString(title), Lines(text), QMessageBox::Ok, OwnerForDialogs());
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
