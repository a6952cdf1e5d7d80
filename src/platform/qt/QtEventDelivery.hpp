#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QSerialPort>

#include "platform/EventDelivery.hpp"

namespace Tamber {

/// Events as Qt's event loop delivers them, with a short way for the bytes of a reply: while
/// replies come, a wait first looks at the serial port alone for a few milliseconds, which costs
/// one system call. It enters the event loop, which costs many, only when nothing came or when the
/// windows have waited long enough, and sleeps there until there is an event, received bytes
/// included.
class QtEventDelivery final : public EventDelivery {
  public:
    QtEventDelivery();

    void DeliverEvents() override;

    /// The port whose bytes end a wait. It may go away before this object does.
    void WatchPort(QSerialPort* port);

  private:
    bool PortHasBytes();

    QPointer<QSerialPort> port_;
    QElapsedTimer sinceEventLoop_;
    bool replying_ = false;  // bytes have come, and no wait for more was in vain since
};

}  // namespace Tamber
