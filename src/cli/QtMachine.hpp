#pragma once

#include "cli/Machine.hpp"
#include "platform/qt/Interruption.hpp"
#include "platform/qt/QtEventDelivery.hpp"

namespace Tamber::Cli {

/// The machine by way of Qt's parts that know no display, interrupted by signals. Needs a
/// QCoreApplication that outlives it, and is made once.
class QtMachine final : public Machine {
  public:
    QtMachine();

    EventDelivery& Events() override { return events_; }
    std::unique_ptr<WindowTimer> NewTimer() override;
    std::unique_ptr<SerialControl> NewSerialControl() override;
    std::vector<SerialPortEntry> SerialPorts() override;
    std::chrono::microseconds Now() const override;
    bool AwaitInput(int descriptor) override { return interruption_.AwaitInput(descriptor); }
    bool Interrupted() const override;

  private:
    QtEventDelivery events_;
    Interruption interruption_;
};

}  // namespace Tamber::Cli
