#include "cli/QtMachine.hpp"

#include <QSerialPortInfo>

#include "cli/Interruption.hpp"
#include "cli/PortLink.hpp"
#include "platform/qt/QtSerialControl.hpp"
#include "platform/qt/QtWindowTimer.hpp"

namespace Tamber::Cli {

// One wake-up is enough: what waits then asks, and an interruption stays one.
QtMachine::QtMachine() {
    if (InterruptionSign() < 0)
        return;
    interruption_.emplace(InterruptionSign(), QSocketNotifier::Read);
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
    return InterruptionNoted();
}

}  // namespace Tamber::Cli
