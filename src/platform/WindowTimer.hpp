#pragma once

#include <chrono>
#include <functional>
#include <utility>

namespace Tamber {

/// A timer that ticks, once a period, while events are being delivered. A period never ends early.
/// It begins disabled, with a period of 1000 ms.
class WindowTimer {
  public:
    virtual ~WindowTimer() = default;

    /// Sets the period; a timer that is running begins a fresh one.
    virtual void SetInterval(std::chrono::milliseconds interval) = 0;

    /// Starts the timer; one that is running goes on as it was.
    virtual void Enable() = 0;
    virtual void Disable() = 0;

    /// What each tick does.
    void OnTick(std::function<void()> tick) { tick_ = std::move(tick); }

  protected:
    void Tick() {
        if (tick_)
            tick_();
    }

  private:
    std::function<void()> tick_;
};

}  // namespace Tamber
