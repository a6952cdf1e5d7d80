#include "ui/frmGoTo.hpp"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "core/HexText.hpp"
#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {

std::optional<int> WordAddress(const QString& text, int last) {
    QString digits = text.trimmed().toUpper();
    if (digits.startsWith("0X"))
        digits.remove(0, 2);
    else if (digits.endsWith('H'))
        digits.chop(1);
    bool ok = false;
    const uint address = digits.toUInt(&ok, 16);
    const bool plain = digits.size() <= 8 && !digits.startsWith('+') && !digits.startsWith("0X");
    if (!ok || !plain || address > static_cast<uint>(last))
        return {};
    return static_cast<int>(address);
}

frmGoTo::frmGoTo(QWidget& owner, int last) : QDialog(&owner), last_(last) {
    MakeControls();
    CentreOnScreen(*this);
}

std::optional<int> frmGoTo::Ask() {
    if (ExecuteModal(*this) != QDialog::Accepted)
        return {};
    return WordAddress(txtAddress->text(), last_);
}

void frmGoTo::MakeControls() {
    DesignDialog(*this, "frmGoTo", "Go to Address", 3735, 1695);
    auto* lblAddress = new QLabel("&Word address (hexadecimal):", this);
    Place(*lblAddress, "lblAddress", 240, 240, 2385, 255);
    txtAddress = new QLineEdit(this);
    txtAddress->setFont(CourierFont(9.75, false));
    DrawAsDesigned(*txtAddress);
    Place(*txtAddress, "txtAddress", 2700, 195, 795, 345);
    lblAddress->setBuddy(txtAddress);
    lblMsg = new QLabel(this);
    Place(*lblMsg, "lblMsg", 240, 660, 3255, 255);
    auto* cmdOk = new QPushButton("OK", this);
    Place(*cmdOk, "cmdOk", 2280, 1080, 1215, 375);
    cmdOk->setDefault(true);
    auto* cmdCancel = new QPushButton("Cancel", this);
    Place(*cmdCancel, "cmdCancel", 240, 1080, 1215, 375);
    connect(cmdOk, &QPushButton::clicked, this, &frmGoTo::cmdOk_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmGoTo::cmdOk_Click() {
    if (WordAddress(txtAddress->text(), last_))
        return accept();
    ShowFitted(*lblMsg, "The address must be from 0000 to " +
                            QString::fromStdString(HexWord(static_cast<std::uint32_t>(last_))) +
                            ".");
    txtAddress->setFocus();
    txtAddress->selectAll();
}

}  // namespace Tamber
