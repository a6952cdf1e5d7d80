#include "FunctionDriver.hpp"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <utility>

#include "StartUp.hpp"

namespace Tamber::Bench {
namespace {

// Costs a counter for each call; the clocks are read at the two noted calls only.
class NotedSerialControl final : public SerialControl {
  public:
    NotedSerialControl(std::unique_ptr<SerialControl> port, Notes& notes)
        : port_(std::move(port)), notes_(notes) {}

    tl::expected<void, std::string> PortOpen(const std::filesystem::path& path) override {
        return port_->PortOpen(path);
    }

    void Output(std::span<const std::uint8_t> bytes) override {
        if (++notes_.Outputs == 1)
            notes_.Begin = Time::Now();
        port_->Output(bytes);
    }

    int InBufferCount() override { return port_->InBufferCount(); }

    void Input(std::vector<std::uint8_t>& bytes) override {
        port_->Input(bytes);
        if (++notes_.Inputs == notes_.Last)
            notes_.End = Time::Now();
    }

  private:
    std::unique_ptr<SerialControl> port_;
    Notes& notes_;
};

// The desktop of the program with notes taken of the serial port's traffic. A box that reports a
// failure ends the benchmark; any other counts as closed at once.
class NotedPlatform final : public Platform, private MessageBoxes {
  public:
    NotedPlatform(Platform& platform, Notes& notes) : platform_(platform), notes_(notes) {}

    EventDelivery& Events() override { return platform_.Events(); }
    MessageBoxes& Boxes() override { return *this; }
    ViewerStarter& Viewer() override { return platform_.Viewer(); }
    std::unique_ptr<WindowTimer> NewTimer() override { return platform_.NewTimer(); }
    std::unique_ptr<SerialControl> NewSerialControl() override {
        return std::make_unique<NotedSerialControl>(platform_.NewSerialControl(), notes_);
    }
    std::unique_ptr<FileDialog> NewFileDialog() override { return platform_.NewFileDialog(); }

  private:
    void Show(const std::string& text, const std::string&, BoxIcon icon) override {
        Require(icon != BoxIcon::Critical, text);
    }

    Platform& platform_;
    Notes& notes_;
};

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

// Program memory alone.
void Choose(QDialog& dialog, std::int16_t function) {
    Find<QListWidget>(dialog, "listFunction").setCurrentRow(function);
    for (const char* other : {"chkEM", "chkID", "chkCW"})
        Find<QCheckBox>(dialog, other).setChecked(false);
    LetEventsRun(20);  // until the dialog has been painted
}

}  // namespace

FunctionDriver::FunctionDriver(const std::filesystem::path& folder)
    : qt_(folder), platform_(std::make_unique<NotedPlatform>(qt_, notes_)) {
    const auto started = StartUp(folder, program_);
    Require(started.has_value(), started ? std::string() : Describe(started.error()));
    QApplication::setQuitOnLastWindowClosed(false);
    window_ = std::make_unique<mdiMain>(program_, *platform_);
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

FunctionTimes FunctionDriver::Run(std::int16_t function, int replies) {
    FunctionTimes times;
    InDialog([&](QDialog& dialog) {
        Choose(dialog, function);
        notes_ = {.Last = replies};
        const Time whole = Timed([&] { Find<QPushButton>(dialog, "cmdRun").click(); });
        const Time exchange = notes_.End - notes_.Begin;
        times = {exchange.Wall, exchange.Processor, whole.Wall};
        const std::string message = Find<QLabel>(dialog, "lblMsg0").text().toStdString();
        Require(message.ends_with("   OK!"), "the run ended with: " + message);
        Require(notes_.Inputs == replies, "the run did not take all replies");
    });
    return times;
}

Time TimeOut(const std::filesystem::path& port) {
    QtPlatform desktop(port.parent_path());
    const auto control = desktop.NewSerialControl();
    const auto timer = desktop.NewTimer();
    LinkState state;
    ProgrammerLink link(state, *control, *timer, desktop.Events());
    Require(link.OpenPort(port).has_value(), "cannot open the silent board's port");
    LetEventsRun(20);
    return Timed([&] { Require(!link.RequestBlock(0), "the silent board has answered"); });
}

}  // namespace Tamber::Bench
