#include <QApplication>
#include <QDropEvent>
#include <QMimeData>

#include "core/Utf8.hpp"
#include "files/HexFile.hpp"
#include "files/HexSave.hpp"
#include "platform/qt/WindowDesign.hpp"
#include "ui/DroppedFile.hpp"
#include "ui/NoticeStrip.hpp"
#include "ui/StatusBar.hpp"
#include "ui/mdiMain.hpp"

namespace Tamber {
namespace {

// What notices are about.
constexpr char LoadFailure[] = "load";
constexpr char SaveFailure[] = "save";
constexpr char FileChange[] = "file on the disk";

}  // namespace

void mdiMain::FileLoad_Click() {
    if (cdia->ShowOpen())
        OpenHexFile();
}

void mdiMain::OpenHexFile() {
    const auto loaded = LoadHexFile(cdia->FileName(), program_.image);
    if (!loaded) {
        if (const std::string_view text = HexFailureText(loaded.error().Fault); !text.empty())
            platform_.Boxes().Show(std::string(text), HexFailureTitle, BoxIcon::Critical);
        else
            ShowFileFailure(LoadFailure, "loaded", loaded.error().Reason);
        return;
    }
    TakeFileForCurrent(LoadFailure);
    views_->CloseAll();
    BufferView_Click();
    CheckFile(*loaded);
}

void mdiMain::FileSave_Click() {
    if (!cdia->ShowSave())
        return;
    if (const auto saved =
            SaveHexFile(cdia->FileName(), program_.image, SelectedRecord(program_).ProgramWords);
        !saved) {
        ShowFileFailure(SaveFailure, "saved", saved.error());
        return;
    }
    TakeFileForCurrent(SaveFailure);
    ForgetFile();
}

// The file last chosen is now the one that the image was loaded from or saved to.
void mdiMain::TakeFileForCurrent(const char* failure) {
    notices_->Withdraw(failure);
    notices_->Withdraw(FileChange);
    sbar->SetPanel(4, "File: " + OutsideText(cdia->FileName().string()));
    watch_.Watch(cdia->FileName());
}

void mdiMain::LoadFile(const std::filesystem::path& file) {
    cdia->SetFileName(file);
    OpenHexFile();
}

void mdiMain::ShowFileChange(bool differs) {
    if (!differs) {
        notices_->Withdraw(FileChange);
        return;
    }
    const std::filesystem::path& file = watch_.File();
    notices_->Show({.Severity = NoticeSeverity::Warning,
                    .Subject = FileChange,
                    .Text = Utf8From(file.filename().string()) + " has changed on the disk.",
                    .Action = NoticeAction{"Load again", [this, file] { LoadFile(file); }}});
}

void mdiMain::dragEnterEvent(QDragEnterEvent* event) {
    if (!event->mimeData()->hasUrls() || QApplication::activeModalWidget())
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

// Whoever the file comes from waits until the drop has been taken, but not until it is loaded.
void mdiMain::dropEvent(QDropEvent* event) {
    if (QApplication::activeModalWidget())
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const auto load = [this, file = DroppedHexFile(*event->mimeData())] {
        if (file)
            LoadFile(*file);
        else
            notices_->Show({.Severity = NoticeSeverity::Failure,
                            .Subject = LoadFailure,
                            .Text = file.error()});
    };
    QMetaObject::invokeMethod(this, load, Qt::QueuedConnection);
}

void mdiMain::ShowFileFailure(const char* subject, const char* done, const std::string& reason) {
    notices_->Show({.Severity = NoticeSeverity::Failure,
                    .Subject = subject,
                    .Text = Utf8From(cdia->FileName().filename().string()) + " was not " + done +
                            ": " + reason});
}

}  // namespace Tamber
