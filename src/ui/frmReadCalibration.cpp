#include "ui/frmReadCalibration.hpp"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {

frmReadCalibration::frmReadCalibration(QWidget& owner, modFunc& program, ProgrammerLink& link,
                                       Platform& platform)
    : QDialog(&owner),
      device_(SelectedRecord(program)),
      link_(link),
      tmrWait_(platform.NewTimer()),
      run_(device_, image_, program.autoSequence, link, *tmrWait_, platform.Events(),
           platform.Boxes(), *this) {
    MakeControls();
    CentreOnScreen(*this);
}

void frmReadCalibration::MakeControls() {
    DesignDialog(*this, "frmReadCalibration", "Calibration Word", 3735, 1575);
    auto* lblMsg = new QLabel("Reading Program Memory...", this);
    Place(*lblMsg, "lblMsg", 240, 195, 3255, 255);
    shpBG = new QProgressBar(this);
    shpBG->setAccessibleName("Progress");
    Place(*shpBG, "shpBG", 240, 525, 3255, 255);
    auto* cmdCancel = new QPushButton("Cancel", this);
    Place(*cmdCancel, "cmdCancel", 2280, 975, 1215, 375);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

std::optional<std::uint16_t> frmReadCalibration::Read() {
    QMetaObject::invokeMethod(
        this, [this] { Run(); }, Qt::QueuedConnection);
    ExecuteModal(*this);
    if (!completed_ || run_.ProgramWords() == 0)
        return std::nullopt;
    return image_.Word(2 * (run_.ProgramWords() - 1));
}

void frmReadCalibration::Run() {
    link_.SelectDeviceType(device_.TypeCode);
    run_.Run(FunctionRead, {true, false, false, false});
    done(QDialog::Accepted);
}

void frmReadCalibration::ProgressMoves(std::int16_t percent) {
    shpBG->setValue(percent);
}

}  // namespace Tamber
