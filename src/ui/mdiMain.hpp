#pragma once

#include <QMainWindow>
#include <memory>

#include "files/DeviceCheck.hpp"
#include "link/ProgrammerLink.hpp"
#include "modFunc.hpp"
#include "operations/FunctionDisplay.hpp"
#include "operations/RunSummary.hpp"
#include "platform/Platform.hpp"
#include "platform/qt/FileWatch.hpp"
#include "ui/BufferViews.hpp"
#include "ui/Notices.hpp"

class QAction;
class QMdiArea;

namespace Tamber {

class NoticeStrip;
class StatusBar;
class frmFunction;
class frmReadCalibration;

/// The program's top-level window: menus, status bar, the buffer views as child windows. It owns
/// the serial port, the time-out timer and the file dialog.
class mdiMain : public QMainWindow {
  public:
    /// `program` and `platform` outlive the window. The time-out timer runs from here on.
    mdiMain(modFunc& program, Platform& platform);
    ~mdiMain() override;

    /// What happens before the window is shown: device and size into the status bar, the port
    /// opened, the board identified (which takes the time-out timer's period), the image cleared.
    void MDIForm_Load();

    /// Makes the device in `slot` the selected one, for whatever comes next to clear the image.
    void SelectDevice(std::int16_t slot);

    /// Ends the program as File > Exit does, but without asking or telling anything: for a signal
    /// and for the end of the desktop session. A running function ends at its next block, with its
    /// sequence closed.
    void EndProgram();

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void MakeMenus();
    void MakeDocumentArea();
    QAction* AddItem(QMenu& menu, const char* name, const char* caption,
                     void (mdiMain::*handler)());
    static void AddSeparator(QMenu& menu, const char* name);

    void ShowSelectedDevice();
    void MDIForm_Activate();
    void MDIForm_Unload();
    void ShowProgrammerInfo();
    void ShowNoBoard();
    void ShowPortFailure(const std::string& reason);

    void FileLoad_Click();
    void FileSave_Click();
    void FileExit_Click();
    void BufferView_Click();
    void BufferClearPM_Click();
    void BufferClearDM_Click();
    void BufferClearConfig_Click();
    void BufferClearAll_Click();
    void DeviceSelect_Click();
    void DeviceFunction_Click();
    void OptionsEditAuto_Click();
    void OptionsSettings_Click();
    void HelpContents_Click();
    void HelpAbout_Click();

    void OpenHexFile();
    void LoadFile(const std::filesystem::path& file);
    void TakeFileForCurrent(const char* failure);
    void ShowFileChange(bool differs);
    void ShowFileFailure(const char* subject, const char* done, const std::string& reason);
    void ReopenViews(const Regions& regions);
    void TellRun(const RunSummary& summary, const std::string& text);
    void TellLine();

    // What the loaded file shows against the device; nothing after ForgetFile.
    void CheckFile(const std::string& text);
    void ForgetFile();
    void TellFile();
    std::optional<DeviceFinding> InTheWindow(DeviceFinding finding) const;
    Notice NoticeOf(const DeviceFinding& finding);
    void SelectAndLoad(const std::string& device);
    void UseFileWords();

    void TellFacts();
    bool MissesCalibrationWord() const;
    std::optional<NoticeAction> KeepIt();
    void TellCalibration();
    void TellErased();
    void KeepCalibration();

    modFunc& program_;
    Platform& platform_;
    std::unique_ptr<SerialControl> cm;
    std::unique_ptr<WindowTimer> totmr;
    std::unique_ptr<FileDialog> cdia;
    ProgrammerLink link_;
    FileWatch watch_;  // of the file last loaded or saved
    StatusBar* sbar = nullptr;
    QMdiArea* documents_ = nullptr;
    NoticeStrip* notices_ = nullptr;
    std::unique_ptr<BufferViews> views_;
    std::unique_ptr<const HexInspection> file_;  // the file last loaded
    frmFunction* runningFunctions_ = nullptr;    // while the function dialog is open
    frmReadCalibration* reading_ = nullptr;      // while that dialog is open
    bool Activated = false;
    bool activating_ = false;
};

}  // namespace Tamber
