#include <QApplication>

#include "operations/frmFunction.hpp"
#include "ui/NoticeStrip.hpp"
#include "ui/mdiMain.hpp"

namespace Tamber {
namespace {

// What notices are about.
constexpr char RunSubject[] = "run";
constexpr char LineSubject[] = "line";

}  // namespace

void mdiMain::DeviceFunction_Click() {
    Regions reopened{false, false, false, false};
    frmFunction dialog(
        *this, program_, link_, platform_,
        [&](const Regions& regions) {
            ReopenViews(regions);
            reopened = regions;
            TellFile();
            if (!MissesCalibrationWord())
                TellCalibration();
        },
        [this](const RunSummary& summary, const std::string& text) { TellRun(summary, text); });
    runningFunctions_ = &dialog;
    dialog.ShowModally();
    runningFunctions_ = nullptr;
    views_->Activate(reopened);
}

void mdiMain::TellRun(const RunSummary& summary, const std::string& text) {
    if (QGuiApplication::applicationState() != Qt::ApplicationActive)
        QApplication::alert(this);
    if (summary.Erased())
        TellErased();
    notices_->Show({.Severity = summary.Good() ? NoticeSeverity::Note : NoticeSeverity::Warning,
                    .Subject = RunSubject,
                    .Text = text});
    TellLine();
}

// Input is never discarded on the program's own account: only the user can do that.
void mdiMain::TellLine() {
    link_.FindLeftOver();
    const auto finding = link_.TakeFinding();
    if (!finding) {
        notices_->Withdraw(LineSubject);
        return;
    }
    notices_->Show({.Severity = NoticeSeverity::Failure,
                    .Subject = LineSubject,
                    .Text = "The line is out of step: " + Describe(*finding) +
                            ". What this function and the next one report cannot be trusted.",
                    .Action = NoticeAction{"Empty the line", [this] {
                                               link_.EmptyLine();
                                               notices_->Withdraw(LineSubject);
                                           }}});
}

}  // namespace Tamber
