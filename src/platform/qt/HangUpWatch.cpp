#include "platform/qt/HangUpWatch.hpp"

#include <termios.h>

#include <QEvent>
#include <QSocketNotifier>
#include <cerrno>
#include <utility>

namespace Tamber {

bool HungUp(const QSerialPort& port) {
    termios line{};
    return tcgetattr(port.handle(), &line) != 0 && errno == EIO;
}

// The port sleeps on notifiers of its own.
HangUpWatch::HangUpWatch(QSerialPort& port, std::function<void()> lost)
    : port_(port), lost_(std::move(lost)) {
    for (QSocketNotifier* notifier : port.findChildren<QSocketNotifier*>())
        notifier->installEventFilter(this);
}

bool HangUpWatch::eventFilter(QObject* notifier, QEvent* event) {
    if (event->type() != QEvent::SockAct || !HungUp(port_))
        return false;
    static_cast<QSocketNotifier*>(notifier)->setEnabled(false);
    QMetaObject::invokeMethod(this, std::exchange(lost_, [] {}), Qt::QueuedConnection);
    return true;
}

}  // namespace Tamber
