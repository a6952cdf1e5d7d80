#include "platform/qt/QtSerialControl.hpp"

#include <QString>
#include <algorithm>

#include "core/Utf8.hpp"

#ifdef __linux__
#include <linux/serial.h>
#include <sys/ioctl.h>
#endif

namespace Tamber {
namespace {

// A device that sends without end is not allowed to fill the memory.
constexpr qint64 ReceivedMax = 1 << 15;

// Common USB adapters hold short replies back for 16 ms unless the driver is asked not to. A driver
// that knows no such flag is no error.
void AskForLowLatency([[maybe_unused]] QSerialPort& port) {
#ifdef __linux__
    serial_struct line{};
    if (ioctl(port.handle(), TIOCGSERIAL, &line) != 0)
        return;
    line.flags |= ASYNC_LOW_LATENCY;
    (void)ioctl(port.handle(), TIOCSSERIAL, &line);
#endif
}

std::string WhatToDo(const QSerialPort& port, const std::string& path) {
    const QString reason = port.errorString();
    const bool held = reason.contains("locking", Qt::CaseInsensitive) ||
                      reason.contains("busy", Qt::CaseInsensitive);
    if (held)
        return "\nAnother program holds the port; close it and start Tamber again.";
    if (port.error() == QSerialPort::PermissionError)
        return "\nYou may not use " + path +
               "; have your user added to the group that owns it (on Debian \"dialout\") and "
               "log in again.";
    return {};
}

std::string FailureText(const QSerialPort& port, const std::string& path) {
    return port.errorString().toStdString() + " (" + path + ")" + WhatToDo(port, path);
}

}  // namespace

QtSerialControl::QtSerialControl(QtEventDelivery& events) {
    events.WatchPort(&port_);
    // A short wait that ends without bytes is an "error" too: queued as well, it would wake the
    // event loop for nothing. So is a full output buffer, whose bytes go out once the line flows.
    // The closing is queued because a port is not closed inside a call of its own.
    QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                     [this](QSerialPort::SerialPortError error) {
                         if (error == QSerialPort::ResourceError && HungUp(port_))
                             QMetaObject::invokeMethod(
                                 &port_, [this] { LosePort(); }, Qt::QueuedConnection);
                     });
    QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] {
        if (port_.bytesAvailable() > ReceivedMax)
            port_.readAll();
    });
}

tl::expected<void, std::string> QtSerialControl::PortOpen(const std::filesystem::path& path) {
    std::error_code error;
    // The lock against other programs is by name, so every name of a port must lead to the same.
    const std::filesystem::path device = std::filesystem::canonical(path, error);
    port_.setPortName(QString::fromStdString(error ? path.string() : device.string()));
    if (!port_.open(QIODevice::ReadWrite) || !port_.setBaudRate(QSerialPort::Baud57600)) {
        const std::string failure = FailureText(port_, VisibleText(path.string()));
        port_.close();
        return tl::unexpected(failure);
    }
    AskForLowLatency(port_);
    watch_ = std::make_unique<HangUpWatch>(port_, [this] { LosePort(); });
    return {};
}

void QtSerialControl::LosePort() {
    lost_ = true;
    port_.close();
}

bool QtSerialControl::PortLost() const {
    return lost_ || (port_.isOpen() && HungUp(port_));
}

void QtSerialControl::Output(std::span<const std::uint8_t> bytes) {
    if (!port_.isOpen())
        return;
    port_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
    port_.flush();
}

int QtSerialControl::InBufferCount() {
    return static_cast<int>(std::min(port_.bytesAvailable(), ReceivedMax));
}

void QtSerialControl::TakeIn() {
    if (port_.isOpen())
        port_.waitForReadyRead(0);
}

void QtSerialControl::Input(std::vector<std::uint8_t>& bytes) {
    bytes.resize(static_cast<std::size_t>(port_.bytesAvailable()));
    const qint64 count =
        port_.read(reinterpret_cast<char*>(bytes.data()), static_cast<qint64>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(std::max<qint64>(count, 0)));
}

}  // namespace Tamber
