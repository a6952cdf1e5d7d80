#include "cli/QtMachine.hpp"

#include <QSerialPortInfo>

#include "cli/Outcome.hpp"
#include "cli/Ports.hpp"
#include "platform/qt/QtSerialControl.hpp"
#include "platform/qt/QtWindowTimer.hpp"

namespace Tamber::Cli {
namespace {

constexpr char Hint[] = "\nEnding at the next block; another interruption ends it at once.\n";

}  // namespace

QtMachine::QtMachine() : interruption_(static_cast<int>(ExitStatus::Interrupted), Hint) {}

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
    return interruption_.Noted();
}

}  // namespace Tamber::Cli
