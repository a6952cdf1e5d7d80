#include "platform/qt/QtSerialControl.hpp"

#include <QString>
#include <QStringList>
#include <algorithm>
#include <utility>

#include "platform/PortPath.hpp"

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif
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

// Hands `bytes` to the driver in one system call and returns how many it took; the port's own
// buffer, with all that belongs to it, is for what the driver has no room for.
std::size_t WriteAtOnce([[maybe_unused]] QSerialPort& port,
                        [[maybe_unused]] std::span<const std::uint8_t> bytes) {
#ifdef Q_OS_UNIX
    if (port.bytesToWrite() == 0)
        if (const auto taken = write(port.handle(), bytes.data(), bytes.size()); taken > 0)
            return static_cast<std::size_t>(taken);
#endif
    return 0;
}

QSerialPort::Parity ParityOf(const QString& letter) {
    if (letter == "E")
        return QSerialPort::EvenParity;
    if (letter == "O")
        return QSerialPort::OddParity;
    return QSerialPort::NoParity;
}

// "57600,N,8,1"
bool ApplySettings(QSerialPort& port, std::string_view settings) {
    const QStringList fields =
        QString::fromLatin1(settings.data(), static_cast<qsizetype>(settings.size())).split(',');
    return fields.size() == 4 && port.setBaudRate(fields[0].toInt()) &&
           port.setParity(ParityOf(fields[1])) &&
           port.setDataBits(static_cast<QSerialPort::DataBits>(fields[2].toInt())) &&
           port.setStopBits(fields[3] == "2" ? QSerialPort::TwoStop : QSerialPort::OneStop);
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

QtSerialControl::QtSerialControl(std::filesystem::path directory, QtEventDelivery& events)
    : directory_(std::move(directory)) {
    events.WatchPort(&port_);
    // A short wait that ends without bytes is an "error" too; told of it later, in the event loop,
    // the loop would wake for nothing. The port is closed later: not inside a call of its own.
    QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                     [this](QSerialPort::SerialPortError error) {
                         if (error == QSerialPort::ResourceError)
                             QMetaObject::invokeMethod(
                                 &port_, [this] { LosePort(); }, Qt::QueuedConnection);
                     });
    QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] {
        if (port_.bytesAvailable() > ReceivedMax)
            port_.readAll();
    });
}

std::optional<std::string> QtSerialControl::PortOpen(int commPort, std::string_view settings) {
    const std::filesystem::path path = path_.empty() ? PortPath(directory_, commPort) : path_;
    std::error_code error;
    // The lock against other programs is by name, so every name of a port must lead to the same.
    const std::filesystem::path device = std::filesystem::canonical(path, error);
    port_.setPortName(QString::fromStdString(error ? path.string() : device.string()));
    if (!port_.open(QIODevice::ReadWrite) || !ApplySettings(port_, settings)) {
        const std::string failure = FailureText(port_, path.string());
        port_.close();
        return failure;
    }
    AskForLowLatency(port_);
    watch_ = std::make_unique<HangUpWatch>(port_, [this] { LosePort(); });
    return std::nullopt;
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
    const std::span<const std::uint8_t> rest = bytes.subspan(WriteAtOnce(port_, bytes));
    if (rest.empty())
        return;
    port_.write(reinterpret_cast<const char*>(rest.data()), static_cast<qint64>(rest.size()));
    port_.flush();
}

int QtSerialControl::InBufferCount() {
    return static_cast<int>(std::min(port_.bytesAvailable(), ReceivedMax));
}

void QtSerialControl::Input(std::vector<std::uint8_t>& bytes) {
    bytes.resize(static_cast<std::size_t>(port_.bytesAvailable()));
    const qint64 count =
        port_.read(reinterpret_cast<char*>(bytes.data()), static_cast<qint64>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(std::max<qint64>(count, 0)));
}

}  // namespace Tamber
