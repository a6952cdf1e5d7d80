#include "cli/QtMachine.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <QSerialPortInfo>
#include <array>
#include <csignal>
#include <string_view>

#include "cli/Outcome.hpp"
#include "cli/Ports.hpp"
#include "platform/qt/QtSerialControl.hpp"
#include "platform/qt/QtWindowTimer.hpp"

namespace Tamber::Cli {
namespace {

// A signal handler can reach nothing but objects of static storage.
volatile std::sig_atomic_t noted = 0;
std::array<int, 2> wake{-1, -1};  // the ends of a pipe: to read from, to write to

constexpr std::array Caught{SIGINT, SIGTERM};

constexpr std::string_view Hint =
    "\nEnding at the next block; another interruption ends it at once.\n";

// When it fails, no one is there to read it.
void Write(int file, std::string_view text) {
    [[maybe_unused]] const auto written = write(file, text.data(), text.size());
}

extern "C" void NoteInterruption(int) {
    if (noted != 0)
        _exit(static_cast<int>(ExitStatus::Interrupted));
    noted = 1;
    Write(wake[1], "!");
    if (isatty(STDERR_FILENO) == 1)
        Write(STDERR_FILENO, Hint);
}

void CatchInterruptions() {
    if (pipe2(wake.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        wake = {-1, -1};
    struct sigaction action {};
    action.sa_handler = NoteInterruption;
    action.sa_flags = SA_RESTART;
    for (const int signal : Caught)
        sigaction(signal, &action, nullptr);
    struct sigaction hangUp {};
    sigaction(SIGHUP, nullptr, &hangUp);
    if (hangUp.sa_handler != SIG_IGN)  // as under nohup
        sigaction(SIGHUP, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace

// One wake-up is enough: what waits then asks, and an interruption stays one.
QtMachine::QtMachine() {
    CatchInterruptions();
    if (wake[0] < 0)
        return;
    interruption_.emplace(wake[0], QSocketNotifier::Read);
    QObject::connect(&*interruption_, &QSocketNotifier::activated, &*interruption_,
                     [this] { interruption_->setEnabled(false); });
}

std::unique_ptr<WindowTimer> QtMachine::NewTimer() {
    return std::make_unique<QtWindowTimer>();
}

std::unique_ptr<SerialControl> QtMachine::NewSerialControl() {
    return std::make_unique<QtSerialControl>(events_);
}

std::vector<SerialPortEntry> QtMachine::SerialPorts() {
    std::vector<SerialPortEntry> ports;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        QString description = info.description();
        for (const QString& more : {info.manufacturer(), info.serialNumber()})
            if (!more.isEmpty())
                description += (description.isEmpty() ? "" : ", ") + more;
        const std::filesystem::path path = info.systemLocation().toStdString();
        ports.push_back({path, description.toStdString(), StablePathOf(path, "/dev/serial/by-id")});
    }
    return ports;
}

std::chrono::microseconds QtMachine::Now() const {
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

bool QtMachine::Interrupted() const {
    return noted != 0;
}

}  // namespace Tamber::Cli
