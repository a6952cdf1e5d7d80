#include "operations/frmFunction.hpp"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <utility>

#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRows.hpp"
#include "platform/qt/ModalDialog.hpp"
#include "platform/qt/WindowDesign.hpp"

namespace Tamber {
namespace {

// A line without a text is not there, or a screen reader would say its frame's caption.
void ShowLine(QLabel& line, const QString& text) {
    ShowFitted(line, text);
    line.setVisible(!text.isEmpty());
}

}  // namespace

frmFunction::frmFunction(QWidget& owner, modFunc& program, ProgrammerLink& link, Platform& platform,
                         ReopenViews reopenViews, RunEnded runEnded)
    : QDialog(&owner),
      owner_(owner),
      program_(program),
      device_(SelectedRecord(program)),
      tmrWait(platform.NewTimer()),
      run_(device_, program.image, program.autoSequence, link, *tmrWait, platform.Events(),
           platform.Boxes(), *this),
      reopenViews_(std::move(reopenViews)),
      runEnded_(std::move(runEnded)) {
    MakeControls();
    Form_Load(link);
}

void frmFunction::Form_Load(ProgrammerLink& link) {
    for (const DeviceFunction& function : DeviceFunctions())
        AddRow(*listFunction, function.Name, function.Code);
    listFunction->setCurrentRow(0);
    run_.ShowProgress(0);
    EnableRun(program_.link.ProgrammerFound,
              "No programmer board answered when Tamber started. Check the board and the port "
              "(Options > Settings), then start Tamber again.");
    link.SelectDeviceType(device_.TypeCode);
    if (device_.EepromBytes == 0) {
        chkEM->setChecked(false);
        chkEM->setEnabled(false);
    }
    frameOption->setEnabled(device_.TypeCode != StreamTypeCode);
}

// A button that cannot be pressed says why.
void frmFunction::EnableRun(bool enable, const char* whyNot) {
    cmdRun->setEnabled(enable);
    cmdRun->setToolTip(enable ? "" : whyNot);
}

void frmFunction::ShowModally() {
    ExecuteModal(*this);
}

void frmFunction::cmdRun_Click() {
    const DeviceFunction* function = FindFunction(HighlightedCode(*listFunction));
    if (running_ || !function)
        return;
    summary_ = RunSummary(function->Code);
    sinceRun_.start();
    run_.Run(function->Code,
             {chkPM->isChecked(), chkEM->isChecked(), chkID->isChecked(), chkCW->isChecked()});
    runEnded_(summary_, summary_.Text(std::chrono::milliseconds(sinceRun_.elapsed())));
}

void frmFunction::cmdClose_Click() {
    reject();
}

// Escape, the close box and Close all come here.
void frmFunction::reject() {
    if (!running_)
        Unload();
}

void frmFunction::closeEvent(QCloseEvent* event) {
    event->ignore();
    reject();
}

void frmFunction::Unload() {
    done(QDialog::Rejected);
}

void frmFunction::RunBegins() {
    running_ = true;
    focusBefore_ = focusWidget();
    listFunction->setFocus();  // the one control that stays usable
    EnableRun(false, "A function is running.");
    cmdClose->setEnabled(false);
    frameOption->setEnabled(false);
}

void frmFunction::RunEnds() {
    running_ = false;
    if (unloaded_) {
        owner_.setEnabled(true);
        return;
    }
    EnableRun(true);
    cmdClose->setEnabled(true);
    frameOption->setEnabled(device_.TypeCode != StreamTypeCode);
    if (focusBefore_)
        focusBefore_->setFocus();
}

void frmFunction::LinesCleared() {
    for (QLabel* line : lblMsg)
        ShowLine(*line, {});
}

void frmFunction::LineBegins(int line, const std::string& text) {
    ShowLine(*lblMsg.at(static_cast<std::size_t>(line)), QString::fromStdString(text));
}

void frmFunction::LineEnds(int line, const std::string& text, const RegionResult& result) {
    summary_.LineEnds(text, result);
    LineBegins(line, text);
}

// A bar and a label that are already right are not painted again.
void frmFunction::ProgressMoves(std::int16_t percent) {
    if (percent == shownPercent_)
        return;
    shownPercent_ = percent;
    lblProgress->setText(QString::number(percent) + "%");
    const float width = static_cast<float>(percent) * static_cast<float>(shpBG->width()) / 100.0F;
    shpProgress->resize(static_cast<int>(width), shpBG->height());
    shpBG->setValue(percent);
}

// The owner stays without input until the run has unwound.
void frmFunction::ReadCompletes() {
    if (unloaded_)
        return;
    unloaded_ = true;
    owner_.setEnabled(false);
    Unload();
}

void frmFunction::ImageChanged(const Regions& regions) {
    reopenViews_(regions);
}

}  // namespace Tamber
