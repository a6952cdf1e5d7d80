#include "ui/frmSettings.hpp"

#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

#include "platform/PortPath.hpp"
#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {

frmSettings::frmSettings(QWidget& owner, modFunc& program) : QDialog(&owner), program_(program) {
    MakeControls();
    Form_Load();
    CentreOnScreen(*this);
}

void frmSettings::ShowModally() {
    ExecuteModal(*this);
}

void frmSettings::MakeControls() {
    DesignDialog(*this, "frmSettings", "Settings", 2745, 2355);
    QGroupBox* frame = MakeFrame("Select Port:", this);
    Place(*frame, "Frame1", 120, 120, 2295, 1695);
    int index = 0;
    for (QRadioButton*& option : optComm) {
        option = new QRadioButton("COM" + QString::number(index + 1), frame);
        DrawAsDesigned(*option);
        Place(*option, ("optComm" + std::to_string(index)).c_str(), 120, 240 + 360 * index, 855,
              255);
        option->setToolTip(OutsideToolTip(PortDescription(program_.AppPath, index + 1)));
        ++index;
    }
    cmdOk = new QPushButton("OK", this);
    Place(*cmdOk, "cmdOk", 1440, 1920, 975, 375);
    cmdOk->setDefault(true);
    cmdCancel = new QPushButton("Cancel", this);
    Place(*cmdCancel, "cmdCancel", 240, 1920, 975, 375);
    connect(cmdOk, &QPushButton::clicked, this, &frmSettings::cmdOk_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmSettings::cmdCancel_Click);
}

void frmSettings::Form_Load() {
    const int port = program_.settings.CommPortNumber;
    if (port < 1 || port > 4)
        return;
    optComm[static_cast<std::size_t>(port - 1)]->setChecked(true);
    optComm[static_cast<std::size_t>(port - 1)]->setFocus();
}

void frmSettings::cmdOk_Click() {
    std::int16_t port = 1;
    while (port < 4 && !optComm[static_cast<std::size_t>(port - 1)]->isChecked())
        ++port;
    program_.settings.CommPortNumber = port;
    accept();
}

void frmSettings::cmdCancel_Click() {
    reject();
}

}  // namespace Tamber
