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
    if (!sinceEventLoop_.hasExpired(EventLoopEvery) && PortHasBytes())
        return;
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    // Where no bytes come there are no replies to be quick for: the next wait sleeps at once.
    if (port_ && port_->bytesAvailable() > 0)
        sinceEventLoop_.start();
}

}  // namespace Tamber
