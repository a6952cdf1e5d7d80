#include "WindowBench.hpp"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <algorithm>
#include <fstream>

#include "StartUp.hpp"
#include "ui/StatusBar.hpp"

namespace Tamber {
namespace {

Simulator::DeviceShape ShapeOf(const DeviceRecord& device) {
    return {device.TypeCode, device.ProgramWords, device.EepromBytes};
}

// A working folder that holds just this device.
std::filesystem::path MakeFolder(const DeviceRecord& device) {
    const std::filesystem::path folder =
        testing::TempDir() + "tamber-windows-" + std::to_string(QCoreApplication::applicationPid());
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "tamber.cfg") << "1\r\n1\r\n1\r\n";
    std::ofstream(folder / "auto.cfg") << "2\r\n3\r\n4\r\n";
    std::ofstream(folder / "tamber.dev")
        << '"' << device.Name << "\"," << device.TypeCode << ',' << device.ProgramWords << ','
        << device.EepromBytes << ',' << device.EraseSupported << "\r\n";
    return folder;
}

}  // namespace

void WindowDesktop::DeliverEvents() {
    Settle();
    FakeDesktop::DeliverEvents();
}

void Settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();  // a window that is shown is painted
    QCoreApplication::processEvents();  // and has come on the screen
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

WindowBench::WindowBench(const DeviceRecord& device, Simulator::FaultPlan faults)
    : engine(desktop.Clock(), ShapeOf(device)), board(engine, desktop.Clock(), std::move(faults)) {
    // A main window that was closed has told the application to end; running it once takes that
    // back.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
    const auto started = StartUp(MakeFolder(device), program);
    EXPECT_TRUE(started) << Describe(started.error());
    desktop.board = &board;
}

void WindowBench::Start() {
    window = std::make_unique<mdiMain>(program, desktop);
    window->MDIForm_Load();
    window->show();
    Settle();
}

QString WindowBench::Panel(int panel) {
    return Find<StatusBar>("sbar")->Panel(panel);
}

void WindowBench::Choose(const char* item) {
    Find<QAction>(item)->trigger();
    Settle();
}

void WindowBench::InDialog(const char* item, const std::function<void(QWidget*)>& use) {
    QTimer::singleShot(0, qApp, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr) << item << " opened no dialog";
        const QPointer<QWidget> still = dialog;
        Settle();
        use(dialog);
        if (still && still->isVisible())
            still->close();
    });
    Find<QAction>(item)->trigger();
    Settle();
}

void WindowBench::InEveryWindow(const std::function<void(QWidget*)>& look) {
    for (const char* view : {"frmBuffer", "frmEEPROM", "frmConfig"})
        look(Find<QWidget>(view));
    for (const char* item :
         {"DeviceFunction", "OptionsEditAuto", "DeviceSelect", "OptionsSettings", "HelpAbout"})
        InDialog(item, look);
}

}  // namespace Tamber
