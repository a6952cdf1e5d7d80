#pragma once

#include <QSocketNotifier>
#include <optional>

#include "cli/Machine.hpp"
#include "platform/qt/QtEventDelivery.hpp"

namespace Tamber::Cli {

/// The machine by way of Qt's parts that know no display. SIGINT, SIGTERM and SIGHUP interrupt the
/// program: the first one wakes the event delivery, the second ends the program at once. A SIGHUP
/// that is ignored stays so. A reader that goes away ends nothing. Needs a QCoreApplication that
/// outlives it, and is made once.
class QtMachine final : public Machine {
  public:
    QtMachine();

    EventDelivery& Events() override { return events_; }
    std::unique_ptr<WindowTimer> NewTimer() override;
    std::unique_ptr<SerialControl> NewSerialControl() override;
    std::vector<SerialPortEntry> SerialPorts() override;
    std::chrono::microseconds Now() const override;
    bool Interrupted() const override;

  private:
    QtEventDelivery events_;
    std::optional<QSocketNotifier> interruption_;
};

}  // namespace Tamber::Cli
