#include "platform/qt/QtEventDelivery.hpp"

#include <QCoreApplication>
#include <QEventLoop>

namespace Tamber {
namespace {

// What the windows may be kept waiting while replies follow one another without a gap.
constexpr qint64 EventLoopEvery = 16;  // milliseconds
constexpr int PortAlone = 1;           // milliseconds

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
    sinceEventLoop_.start();
}

}  // namespace Tamber
