#include "platform/qt/QtWindowTimer.hpp"

namespace Tamber {

QtWindowTimer::QtWindowTimer() {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(std::chrono::milliseconds(1000));
    QObject::connect(&timer_, &QTimer::timeout, [this] { Tick(); });
}

void QtWindowTimer::SetInterval(std::chrono::milliseconds interval) {
    timer_.setInterval(interval);  // restarts a running timer
}

void QtWindowTimer::Enable() {
    if (!timer_.isActive())
        timer_.start();
}

void QtWindowTimer::Disable() {
    timer_.stop();
}

}  // namespace Tamber
