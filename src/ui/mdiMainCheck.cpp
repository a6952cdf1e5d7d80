#include <utility>

#include "files/HexMove.hpp"
#include "ui/NoticeStrip.hpp"
#include "ui/mdiMain.hpp"

namespace Tamber {
namespace {

using Kind = DeviceFindingKind;

constexpr char FileCheck[] = "file check";  // what notices are about

}  // namespace

void mdiMain::CheckFile(const std::string& text) {
    file_ = std::make_unique<const HexInspection>(
        InspectHexText(text, SelectedRecord(program_), SelectedFact(program_)));
    TellCalibration();
    TellFile();
}

void mdiMain::ForgetFile() {
    file_.reset();
    TellFile();
}

void mdiMain::TellFile() {
    std::vector<Notice> notices;
    if (file_)
        for (DeviceFinding& finding :
             CheckForDevice(*file_, SelectedRecord(program_), program_.facts, program_.catalogue,
                            program_.settings.DeviceCount))
            if (const auto told = InTheWindow(std::move(finding)))
                notices.push_back(NoticeOf(*told));
    notices_->Replace(FileCheck, std::move(notices));
}

// What a finding comes to in an image that keeps what the file does not carry; nothing when the
// image has what it asks for.
std::optional<DeviceFinding> mdiMain::InTheWindow(DeviceFinding finding) const {
    if (finding.Kind == Kind::NoCalibrationWord && !MissesCalibrationWord())
        return std::nullopt;
    if (finding.Kind == Kind::NoConfigurationWord)
        finding.Value = program_.image.Word(MemoryImage::ConfigurationWord);
    if (finding.Kind == Kind::ElsewhereInFile) {
        MemoryImage moved = program_.image;
        const bool movable =
            MoveToImagePlaces(*file_, SelectedRecord(program_), SelectedFact(program_), moved)
                .Any();
        if (movable && moved == program_.image)
            return std::nullopt;
    }
    return finding;
}

Notice mdiMain::NoticeOf(const DeviceFinding& finding) {
    const bool harmful = SeverityOf(finding.Kind) == HexSeverity::Harmful;
    const auto [cause, remedy] = WordsOf(finding, SelectedRecord(program_));
    Notice notice{.Severity = harmful ? NoticeSeverity::Warning : NoticeSeverity::Note,
                  .Text = cause + " " + remedy};
    if (!finding.Better.empty())
        notice.Action = NoticeAction{"Select " + finding.Better,
                                     [this, device = finding.Better] { SelectAndLoad(device); }};
    else if (finding.Kind == Kind::ElsewhereInFile && SelectedFact(program_).FileConfiguration)
        notice.Action =
            NoticeAction{"Use its configuration word and IDs", [this] { UseFileWords(); }};
    else if (finding.Kind == Kind::NoCalibrationWord)
        notice.Action = KeepIt();
    if (finding.Address >= 0 && finding.Address / 2 <= views_->LastAddress())
        notice.Go = [this, word = static_cast<int>(finding.Address / 2)] {
            activateWindow();
            views_->GoTo(word);
        };
    return notice;
}

// As Select Device does it, with that row.
void mdiMain::SelectAndLoad(const std::string& device) {
    const std::filesystem::path file = watch_.File();
    for (std::int16_t slot = 1; slot <= program_.settings.DeviceCount; ++slot)
        if (program_.catalogue.Record(slot).Name == device) {
            SelectDevice(slot);
            BufferClearAll_Click();
            TellCalibration();
            BufferView_Click();
            return LoadFile(file);
        }
}

void mdiMain::UseFileWords() {
    MoveToImagePlaces(*file_, SelectedRecord(program_), SelectedFact(program_), program_.image);
    views_->ReopenConfiguration();
    TellFile();
}

}  // namespace Tamber
