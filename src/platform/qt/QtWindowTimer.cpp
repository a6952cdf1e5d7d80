#include "platform/qt/QtWindowTimer.hpp"

namespace Tamber {

QtWindowTimer::QtWindowTimer() {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { timer_Timeout(); });
}

void QtWindowTimer::SetInterval(std::chrono::milliseconds interval) {
    interval_ = interval;
    if (enabled_)
        BeginPeriod();
}

void QtWindowTimer::Enable() {
    if (enabled_)
        return;
    enabled_ = true;
    BeginPeriod();
}

void QtWindowTimer::Disable() {
    enabled_ = false;
}

void QtWindowTimer::BeginPeriod() {
    due_ = Clock::now() + interval_;
    if (!timer_.isActive() || fires_ > due_)
        Arm(interval_);
}

void QtWindowTimer::Arm(std::chrono::milliseconds time) {
    timer_.start(time);
    fires_ = Clock::now() + time;
}

void QtWindowTimer::timer_Timeout() {
    if (!enabled_)
        return;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(due_ - Clock::now());
    if (left.count() > 0)
        return Arm(left);
    BeginPeriod();
    Tick();
}

}  // namespace Tamber
