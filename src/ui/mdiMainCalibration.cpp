#include "core/HexText.hpp"
#include "core/Utf8.hpp"
#include "ui/NoticeStrip.hpp"
#include "ui/frmReadCalibration.hpp"
#include "ui/mdiMain.hpp"

namespace Tamber {
namespace {

// What notices are about.
constexpr char FactsSubject[] = "facts";
constexpr char CalibrationSubject[] = "calibration";

}  // namespace

void mdiMain::TellFacts() {
    if (!program_.factsFailure)
        return;
    std::string text = Describe(*program_.factsFailure);
    for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n', end))
        text.replace(end, 1, ". ");
    notices_->Show(
        {.Severity = NoticeSeverity::Warning, .Subject = FactsSubject, .Text = std::move(text)});
}

// The device has one, and the image does not.
bool mdiMain::MissesCalibrationWord() const {
    const DeviceFact& fact = SelectedFact(program_);
    return fact.HasCalibrationWord.value_or(false) &&
           !CalibrationWordIn(program_.image, SelectedRecord(program_), fact);
}

std::optional<NoticeAction> mdiMain::KeepIt() {
    if (!program_.link.ProgrammerFound)
        return std::nullopt;
    return NoticeAction{"Keep it", [this] { KeepCalibration(); }};
}

// Of the device that has just been selected. Once a file is loaded, its check says more.
void mdiMain::TellCalibration() {
    if (file_ || !MissesCalibrationWord())
        return notices_->Withdraw(CalibrationSubject);
    notices_->Show({.Severity = NoticeSeverity::Note,
                    .Subject = CalibrationSubject,
                    .Text = Utf8From(SelectedRecord(program_).Name) +
                            " has a calibration word from its factory, which an erase loses. Read "
                            "first, then Load, and the word stays.",
                    .Action = KeepIt()});
}

// Of a device that has just been erased: it is too late to read it.
void mdiMain::TellErased() {
    const DeviceFact& fact = SelectedFact(program_);
    if (!fact.HasCalibrationWord.value_or(false))
        return;
    const auto word = CalibrationWordIn(program_.image, SelectedRecord(program_), fact);
    notices_->Show({.Severity = word ? NoticeSeverity::Note : NoticeSeverity::Warning,
                    .Subject = CalibrationSubject,
                    .Text = word ? "The image has the calibration word " + HexWord(*word) + "."
                                 : "The image has no calibration word."});
}

void mdiMain::KeepCalibration() {
    frmReadCalibration dialog(*this, program_, link_, platform_);
    reading_ = &dialog;
    const auto last = dialog.Read();
    reading_ = nullptr;
    TellLine();
    if (!last)
        return;
    const DeviceRecord& device = SelectedRecord(program_);
    Notice notice{.Subject = CalibrationSubject};
    if (IsCalibrationWord(*last, device.TypeCode)) {
        program_.image.SetWord(2 * (device.ProgramWords - 1), *last);
        views_->ReopenProgramMemory();
        notice.Text = "The calibration word " + HexWord(*last) + " is in the image now.";
    } else {
        notice.Severity = NoticeSeverity::Warning;
        notice.Text = "The device in the socket has no calibration word; its last word reads " +
                      HexWord(*last) + ".";
    }
    notices_->Show(std::move(notice));
    TellFile();
}

}  // namespace Tamber
