#include "platform/qt/QtEventDelivery.hpp"

#include <QCoreApplication>
#include <QEventLoop>

namespace Tamber {
namespace {

// How long the windows may wait while replies follow one another without a gap.
constexpr qint64 EventLoopEvery = 16;  // milliseconds

// A time-out shorter than the system's own tick (4 ms on most) makes every wait set the hardware
// timer, which costs more than the wait's system call; one much longer delays ticks and keys.
constexpr int PortAlone = 5;  // milliseconds

}  // namespace

QtEventDelivery::QtEventDelivery() {
    sinceEventLoop_.start();
}

void QtEventDelivery::WatchPort(QSerialPort* port) {
    port_ = port;
}

bool QtEventDelivery::PortHasBytes() {
    return port_ && port_->isOpen() && port_->waitForReadyRead(PortAlone);
}

void QtEventDelivery::DeliverEvents() {
    if (replying_ && !sinceEventLoop_.hasExpired(EventLoopEvery)) {
        replying_ = PortHasBytes();
        if (replying_)
            return;
    }
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    sinceEventLoop_.start();
    replying_ = replying_ || (port_ && port_->bytesAvailable() > 0);
}

}  // namespace Tamber
