// The link as the program uses it, against a loop of the system's own calls.

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "BoardProcess.hpp"
#include "Measure.hpp"
#include "RawPort.hpp"
#include "StartUp.hpp"
#include "core/AutoSequence.hpp"
#include "platform/qt/QtPlatform.hpp"
#include "ui/mdiMain.hpp"

namespace Tamber::Bench {
namespace {

constexpr int Blocks = MemoryImage::ProgramWordsMax / 8;
constexpr Unit MicrosecondsATrip{"us", 1e-6 * Blocks};

// What passed through the serial port, and when.
struct Notes {
    int Last = 0;     // the reply, counted from 1, whose taking ends the time
    int Outputs = 0;  // the first begins the time
    int Inputs = 0;
    Time Begin{};
    Time End{};
};

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

// The program itself, on the screen, used as a user does: the function dialog is opened from the
// menu, a function chosen, Run pressed and the dialog closed.
class FunctionDriver {
  public:
    // Starts the program in `folder` and waits until the board has been found.
    explicit FunctionDriver(const std::filesystem::path& folder) : qt_(folder) {
        const auto started = StartUp(folder, program_);
        Require(started.has_value(), started ? std::string() : Describe(started.error()));
        QApplication::setQuitOnLastWindowClosed(false);
        window_ = std::make_unique<mdiMain>(program_, platform_);
        window_->MDIForm_Load();
        window_->show();
        LetEventsRun(200);
        Require(program_.link.ProgrammerFound, "the program has not found the board");
    }

    // Runs a function on program memory alone; returns the time from the first request to the last
    // block's reply. Ends the benchmark when the run does not go well.
    Time Run(std::int16_t function) {
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            Require(dialog != nullptr && dialog->objectName() == "frmFunction",
                    "the function dialog does not open");
            UseDialog(*dialog, function);
        });
        Find<QAction>(*window_, "DeviceFunction").trigger();
        return notes_.End - notes_.Begin;
    }

    MemoryImage& Image() { return program_.image; }

  private:
    void UseDialog(QDialog& dialog, std::int16_t function) {
        Find<QListWidget>(dialog, "listFunction").setCurrentRow(function);
        for (const char* other : {"chkEM", "chkID", "chkCW"})
            Find<QCheckBox>(dialog, other).setChecked(false);
        LetEventsRun(20);  // until the dialog has been painted
        notes_ = {.Last = Blocks};
        Find<QPushButton>(dialog, "cmdRun").click();
        const std::string message = Find<QLabel>(dialog, "lblMsg0").text().toStdString();
        Require(message.ends_with("   OK!"), "the run ended with: " + message);
        Require(notes_.Inputs == Blocks, "the run did not take all replies");
        if (dialog.isVisible())
            Find<QPushButton>(dialog, "cmdClose").click();
    }

    modFunc program_;
    QtPlatform qt_;
    Notes notes_;
    NotedPlatform platform_{qt_, notes_};
    std::unique_ptr<mdiMain> window_;
};

// Asks the board at `port`, which must not answer, for a block: one wait for a reply, up to its
// time-out, while nothing changes on the screen.
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

// The wall and processor time of a round trip.
void MeasureFunction(FunctionDriver& program, RawPort& raw, const std::string& name,
                     std::int16_t function, int rounds) {
    const bool writes = function == FunctionProgram;
    const auto runs = Compare(
        rounds, [&] { return program.Run(function); },
        [&] { return Timed([&] { writes ? raw.WriteBlocks(Blocks) : raw.ReadBlocks(Blocks); }); });
    PrintRow(name + ", one round trip, wall", MicrosecondsATrip, runs.Of(&Time::Wall),
             {.Most = 1.25, .OfRatio = true});
    PrintRow(name + ", one round trip, processor", MicrosecondsATrip, runs.Of(&Time::Processor),
             {.Most = 1.5, .OfRatio = true});
}

void MeasureAtOnce(int rounds) {
    const BoardProcess board;
    const BoardProcess rawBoard;
    FunctionDriver program(board.Folder());
    RawPort raw(rawBoard.Port());
    FillProgramMemory(program.Image());
    MeasureFunction(program, raw, "Program 8,192 words", FunctionProgram, rounds);
    const MemoryImage written = program.Image();
    program.Image().ClearProgramMemory(10);
    MeasureFunction(program, raw, "Read 8,192 words", FunctionRead, 3 * rounds);
    Require(program.Image() == written, "what was read is not what was written");
    MeasureFunction(program, raw, "Verify 8,192 words", FunctionVerify, 3 * rounds);
}

void MeasureAtPace(int rounds) {
    const BoardProcess board({"--pace", "57600"});
    const BoardProcess rawBoard({"--pace", "57600"});
    FunctionDriver program(board.Folder());
    RawPort raw(rawBoard.Port());
    const auto reads = Compare(
        rounds, [&] { return program.Run(FunctionRead); },
        [&] { return Timed([&] { raw.ReadBlocks(Blocks); }); });
    PrintRow("Read 8,192 words at 57600 baud, wall", Milliseconds, reads.Of(&Time::Wall),
             {.Most = 1.01, .OfRatio = true});
}

void MeasureSilence(int rounds) {
    const BoardProcess board({"--silent-from", "1"});
    const BoardProcess rawBoard({"--silent-from", "1"});
    RawPort raw(rawBoard.Port());
    const auto waits = Compare(
        rounds, [&] { return TimeOut(board.Port()); },
        [&] { return Timed([&] { raw.WaitInVain(); }); });
    const auto earliest = std::ranges::min(waits.Program, {}, &Time::Wall);
    const Bound second{.Least = 1.000, .Most = 1.010};
    PrintRow("Time-out of a reply", Milliseconds, waits.Of(&Time::Wall), second);
    PrintRow("Time-out of a reply, the earliest", Milliseconds, {earliest.Wall}, second);
    PrintRow("A second of silence, processor", Microseconds, waits.Of(&Time::Processor),
             {.Most = 0.001});
}

}  // namespace
}  // namespace Tamber::Bench

int main(int count, char** values) {
    using namespace Tamber::Bench;
    const int rounds = RoundsWanted(count, values);
    UseCore(0);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, values);
    MeasureAtOnce(rounds);
    MeasureAtPace((rounds + 1) / 2);  // takes long, and hardly varies
    MeasureSilence(rounds);
}
