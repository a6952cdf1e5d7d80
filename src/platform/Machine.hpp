#pragma once

#include <memory>

#include "platform/EventDelivery.hpp"
#include "platform/SerialControl.hpp"
#include "platform/WindowTimer.hpp"

namespace Tamber {

/// What every front end needs of the machine it runs on. It outlives everything it makes.
class Machine {
  public:
    virtual ~Machine() = default;

    virtual EventDelivery& Events() = 0;
    virtual std::unique_ptr<WindowTimer> NewTimer() = 0;
    virtual std::unique_ptr<SerialControl> NewSerialControl() = 0;
};

}  // namespace Tamber
