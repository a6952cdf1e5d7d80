#include "platform/qt/HangUpWatch.hpp"

#include <QEvent>
#include <QSocketNotifier>
#include <utility>

#ifdef Q_OS_UNIX
#include <termios.h>

#include <cerrno>
#endif

namespace Tamber {

bool HungUp([[maybe_unused]] const QSerialPort& port) {
#ifdef Q_OS_UNIX
    termios line{};
    return tcgetattr(port.handle(), &line) != 0 && errno == EIO;
#else
    return false;
#endif
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
