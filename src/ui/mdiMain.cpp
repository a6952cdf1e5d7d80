#include "ui/mdiMain.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QMdiArea>
#include <QMenuBar>
#include <QPointer>
#include <QVBoxLayout>
#include <iostream>

#include "StartUp.hpp"
#include "core/HexText.hpp"
#include "core/Utf8.hpp"
#include "files/HexFile.hpp"
#include "link/BoardIdentity.hpp"
#include "operations/frmEditAuto.hpp"
#include "operations/frmFunction.hpp"
#include "platform/PortPath.hpp"
#include "platform/qt/WindowDesign.hpp"
#include "ui/ManualWindow.hpp"
#include "ui/NoticeStrip.hpp"
#include "ui/StatusBar.hpp"
#include "ui/WindowPlace.hpp"
#include "ui/frmAbout.hpp"
#include "ui/frmReadCalibration.hpp"
#include "ui/frmSelectDevice.hpp"
#include "ui/frmSettings.hpp"

namespace Tamber {
namespace {

// Room for the three views at their home positions, menu, a notice and status bar; in twips.
constexpr QSize RoomForViews(11100, 10080);

bool LoadsWhole(const std::string& text) {
    return ReadHexRecords(text).has_value();
}

}  // namespace

mdiMain::mdiMain(modFunc& program, Platform& platform)
    : program_(program),
      platform_(platform),
      cm(platform.NewSerialControl()),
      totmr(platform.NewTimer()),
      cdia(platform.NewFileDialog()),
      link_(program.link, *cm, *totmr, platform.Events()),
      watch_(LoadsWhole, [this](bool differs) { ShowFileChange(differs); }) {
    setObjectName("mdiMain");
    setWindowTitle("Tamber ~ PIC Programmer");
    sbar = new StatusBar(this);
    setStatusBar(sbar);
    MakeMenus();
    MakeDocumentArea();
}

mdiMain::~mdiMain() = default;

void mdiMain::MakeDocumentArea() {
    // The views are narrow; a desktop's larger font would cut their titles.
    QApplication::setFont(SansSerifFont(), "QMdiSubWindowTitleBar");
    documents_ = new QMdiArea(this);
    documents_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    documents_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    notices_ = new NoticeStrip(this);
    auto* area = new QWidget(this);
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(notices_);
    layout->addWidget(documents_, 1);
    setCentralWidget(area);
    setAcceptDrops(true);
    views_ = std::make_unique<BufferViews>(*documents_, program_);
    RestorePlace(*this, {Pixels(RoomForViews.width()), Pixels(RoomForViews.height())});
}

void mdiMain::ShowSelectedDevice() {
    const DeviceRecord& device = SelectedRecord(program_);
    sbar->SetPanel(2, "Device: " + OutsideText(device.Name));
    sbar->SetPanel(
        3, "Size: " +
               QString::fromStdString(HexNumber(static_cast<std::uint32_t>(device.ProgramWords))) +
               "H");
}

void mdiMain::MDIForm_Load() {
    Activated = false;
    ShowSelectedDevice();
    TellFacts();
    const int port = program_.settings.CommPortNumber;
    if (const auto opened = link_.OpenPort(PortPath(program_.AppPath, port)); !opened) {
        ShowPortFailure(opened.error());
        return;
    }
    link_.IdentifyProgrammer();
    sbar->SetPanel(1, "COM" + QString::number(port));
    BufferClearAll_Click();
    TellCalibration();
}

void mdiMain::ShowPortFailure(const std::string& reason) {
    platform_.Boxes().Show(PortFailureText(program_.settings.CommPortNumber, reason),
                           PortFailureTitle, BoxIcon::Critical);
    sbar->SetPanel(1, "FAIL");
    program_.link.ProgrammerFound = false;
}

// Desktops report an activation in their own time and some, without a window manager, not at all.
// So the window counts as activated once it has been painted; MDIForm_Activate acts only once.
bool mdiMain::event(QEvent* event) {
    const bool handled = QMainWindow::event(event);
    if (event->type() == QEvent::Show && !event->spontaneous())
        activateWindow();
    if (event->type() == QEvent::Paint && !Activated)
        QMetaObject::invokeMethod(
            this, [this] { MDIForm_Activate(); }, Qt::QueuedConnection);
    return handled;
}

void mdiMain::MDIForm_Activate() {
    if (Activated || activating_ || !isVisible())
        return;
    activating_ = true;
    ShowProgrammerInfo();
    activating_ = false;
}

void mdiMain::ShowProgrammerInfo() {
    const BoardIdentity& board = program_.link.Board;
    if (program_.link.ProgrammerFound)
        platform_.Boxes().Show(Describe({VisibleText(board.Name), VisibleText(board.Version)}),
                               ProgramTitle, BoxIcon::None);
    else
        ShowNoBoard();
    BufferView_Click();
    Activated = true;
}

void mdiMain::ShowNoBoard() {
    platform_.Boxes().Show(NoReplyText, NoReplyTitle, BoxIcon::Critical);
    notices_->Show({.Subject = "board",
                    .Text = "No board has answered. The manual tells how to attach one.",
                    .Action = NoticeAction{"Attaching a board", [this] {
                                               ManualWindow::ShowBeside(*this, "board.html");
                                           }}});
}

// A running function needs its dialog and this window until it ends.
void mdiMain::closeEvent(QCloseEvent* event) {
    if (reading_ || (runningFunctions_ && runningFunctions_->Running())) {
        event->ignore();
        return;
    }
    RememberPlace(*this);
    MDIForm_Unload();
    event->accept();
    QCoreApplication::exit(0);
}

void mdiMain::EndProgram() {
    if (runningFunctions_)
        runningFunctions_->StopRunning();
    if (reading_)
        reading_->StopRunning();
    RememberPlace(*this);
    if (const auto saved = SaveSettings(SettingsFile(program_), program_.settings); !saved)
        std::cerr << "Tamber: " << Describe(saved.error()) << std::endl;
    QCoreApplication::exit(0);
}

void mdiMain::MDIForm_Unload() {
    if (const auto saved = SaveSettings(SettingsFile(program_), program_.settings); !saved)
        platform_.Boxes().Show(Describe(saved.error()), ProgramTitle, BoxIcon::Critical);
}

void mdiMain::ReopenViews(const Regions& regions) {
    if (regions.ProgramMemory)
        views_->ReopenProgramMemory();
    if (regions.Eeprom && views_->HasEeprom())
        views_->ReopenEeprom();
    if (regions.IdLocations || regions.ConfigurationWord)
        views_->ReopenConfiguration();
}

void mdiMain::FileExit_Click() {
    close();
}

void mdiMain::BufferView_Click() {
    views_->Show();
}

void mdiMain::BufferClearPM_Click() {
    program_.image.ClearProgramMemory(SelectedRecord(program_).TypeCode);
    views_->ReopenProgramMemory();
}

void mdiMain::BufferClearDM_Click() {
    program_.image.ClearEeprom();
    if (views_->HasEeprom())
        views_->ReopenEeprom();
}

void mdiMain::BufferClearConfig_Click() {
    program_.image.ClearConfiguration();
    views_->ReopenConfiguration();
}

void mdiMain::BufferClearAll_Click() {
    BufferClearConfig_Click();
    BufferClearDM_Click();
    BufferClearPM_Click();
}

void mdiMain::SelectDevice(std::int16_t slot) {
    program_.settings.SelectedDevice = slot;
    program_.SelectionCancelled = false;
    ShowSelectedDevice();
    views_->CloseAll();
    ForgetFile();
}

void mdiMain::DeviceSelect_Click() {
    frmSelectDevice(*this, program_).ShowModally();
    if (!program_.SelectionCancelled) {
        BufferClearAll_Click();
        TellCalibration();
    }
    BufferView_Click();
}

void mdiMain::OptionsEditAuto_Click() {
    frmEditAuto(*this, program_, platform_.Boxes()).ShowModally();
}

void mdiMain::OptionsSettings_Click() {
    frmSettings(*this, program_).ShowModally();
}

void mdiMain::HelpContents_Click() {
    platform_.Viewer().Start("winhlp32.exe", {"TAMBER.HLP"}, [window = QPointer<mdiMain>(this)] {
        if (window && window->isVisible())
            ManualWindow::ShowBeside(*window);
    });
}

void mdiMain::HelpAbout_Click() {
    frmAbout(this, platform_).ShowModally();
}

}  // namespace Tamber
