#include "FirstPaint.hpp"

#include <unistd.h>

#include <QEvent>
#include <QMainWindow>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace Tamber::Bench {

FirstPaintApplication::FirstPaintApplication(int& count, char** values)
    : QApplication(count, values), start_(count > 1 ? std::atof(values[1]) : 0) {}

// The widgets of a window are painted one after the other. The first event that paints none of them
// comes when all of them, and the way to the screen, are done; the one posted here comes at once.
bool FirstPaintApplication::notify(QObject* receiver, QEvent* event) {
    const bool paint = event->type() == QEvent::Paint && receiver->isWidgetType();
    if (paint && !painting_) {
        painting_ = true;
        postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
    } else if (!paint && painting_ && paintDepth_ == 0 && first_ == 0) {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        first_ = std::chrono::duration<double>(now).count() - start_;
    }
    if (paint && !ending_ &&
        qobject_cast<QMainWindow*>(static_cast<QWidget*>(receiver)->window())) {
        ending_ = true;
        QTimer::singleShot(500, this, [this] {
            std::printf("%.9f\n", first_);
            std::fflush(stdout);
            ::_exit(0);
        });
    }
    paintDepth_ += paint;
    const bool handled = QApplication::notify(receiver, event);
    paintDepth_ -= paint;
    return handled;
}

}  // namespace Tamber::Bench
