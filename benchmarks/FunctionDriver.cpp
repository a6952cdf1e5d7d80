#include "FunctionDriver.hpp"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include "BoardProcess.hpp"
#include "StartUp.hpp"
#include "core/AutoSequence.hpp"
#include "platform/PortPath.hpp"

namespace Tamber::Bench {
namespace {

template <typename Control>
Control& Find(QObject& parent, const char* name) {
    auto* control = parent.findChild<Control*>(name);
    Require(control != nullptr, std::string("there is no ") + name);
    return *control;
}

void LetEventsRun(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

}  // namespace

FunctionDriver::FunctionDriver(const std::filesystem::path& folder)
    : qt_(folder), platform_(qt_, notes_) {
    const auto started = Tamber::StartUp(folder, program_);
    Require(started.has_value(), started ? std::string() : Describe(started.error()));
    QApplication::setQuitOnLastWindowClosed(false);
    window_ = std::make_unique<mdiMain>(program_, platform_);
    window_->MDIForm_Load();
    window_->show();
    LetEventsRun(200);
    Require(program_.link.ProgrammerFound, "the program has not found the board");
}

// Opens the function dialog and returns when it has been closed.
void FunctionDriver::InDialog(const std::function<void(QDialog&)>& use) {
    QTimer::singleShot(0, [&use] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        Require(dialog != nullptr && dialog->objectName() == "frmFunction",
                "the function dialog does not open");
        use(*dialog);
        if (dialog->isVisible())
            Find<QPushButton>(*dialog, "cmdClose").click();
    });
    Find<QAction>(*window_, "DeviceFunction").trigger();
}

// Program memory alone.
void FunctionDriver::Choose(QDialog& dialog, std::int16_t function) {
    Find<QListWidget>(dialog, "listFunction").setCurrentRow(function);
    for (const char* other : {"chkEM", "chkID", "chkCW"})
        Find<QCheckBox>(dialog, other).setChecked(false);
    LetEventsRun(20);  // until the dialog has been painted
}

FunctionTimes FunctionDriver::Run(std::int16_t function, int replies) {
    FunctionTimes times;
    InDialog([&](QDialog& dialog) {
        Choose(dialog, function);
        notes_.Arm(replies);
        const Moment pressed = Moment::Now();
        Find<QPushButton>(dialog, "cmdRun").click();
        times = {notes_.End.Since(notes_.Begin), Moment::Now().Since(pressed)};
        const std::string message = Find<QLabel>(dialog, "lblMsg0").text().toStdString();
        Require(message.ends_with("   OK!"), "the run ended with: " + message + notes_.BoxText);
        Require(notes_.Inputs == replies, "the run did not take all replies");
    });
    return times;
}

Spent FunctionDriver::TimeOut(const std::filesystem::path& folder) {
    QtPlatform desktop(folder);
    const auto port = desktop.NewSerialControl();
    const auto timer = desktop.NewTimer();
    LinkState state;
    ProgrammerLink link(state, *port, *timer, desktop.Events());
    Require(link.OpenPort(folder / "com1").has_value(), "cannot open the silent board's port");
    LetEventsRun(20);
    const Moment begin = Moment::Now();
    const auto reply = link.RequestBlock(0);
    const Spent spent = Moment::Now().Since(begin);
    Require(!reply, "the silent board has answered");
    return spent;
}

}  // namespace Tamber::Bench
