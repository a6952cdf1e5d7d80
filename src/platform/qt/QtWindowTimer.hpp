#pragma once

#include <QTimer>

#include "platform/WindowTimer.hpp"

namespace Tamber {

/// A precise Qt timer: Qt's coarse ones may end a period up to 5 % early.
class QtWindowTimer final : public WindowTimer {
  public:
    QtWindowTimer();

    void SetInterval(std::chrono::milliseconds interval) override;
    void Enable() override;
    void Disable() override;

  private:
    QTimer timer_;
};

}  // namespace Tamber
