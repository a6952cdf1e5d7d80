#pragma once

#include <QTimer>

#include "platform/WindowTimer.hpp"

namespace Tamber {

/// A precise Qt timer: Qt's coarse ones may end a period up to 5 % early. Enabling and disabling,
/// which every reply does, touch a deadline only: the Qt timer runs on and looks at it when it
/// fires.
class QtWindowTimer final : public WindowTimer {
  public:
    QtWindowTimer();

    void SetInterval(std::chrono::milliseconds interval) override;
    void Enable() override;
    void Disable() override;

  private:
    using Clock = std::chrono::steady_clock;

    void BeginPeriod();
    void Arm(std::chrono::milliseconds time);
    void timer_Timeout();

    QTimer timer_;
    std::chrono::milliseconds interval_{1000};
    Clock::time_point due_;    // end of the period, while enabled
    Clock::time_point fires_;  // when the Qt timer fires, while it runs
    bool enabled_ = false;
};

}  // namespace Tamber
