#pragma once

#include <QSerialPort>
#include <memory>

#include "platform/SerialControl.hpp"
#include "platform/qt/HangUpWatch.hpp"
#include "platform/qt/QtEventDelivery.hpp"

namespace Tamber {

/// The serial port of the operating system. Every request goes out at once, in one write. A port
/// that goes away (an adapter pulled out) is closed; from then on nothing is sent or received.
class QtSerialControl final : public SerialControl {
  public:
    /// `events` learns of received bytes from the port.
    explicit QtSerialControl(QtEventDelivery& events);

    [[nodiscard]] tl::expected<void, std::string> PortOpen(
        const std::filesystem::path& path) override;
    void Output(std::span<const std::uint8_t> bytes) override;
    int InBufferCount() override;
    void TakeIn() override;
    void Input(std::vector<std::uint8_t>& bytes) override;
    bool PortLost() const override;

  private:
    void LosePort();

    QSerialPort port_;
    std::unique_ptr<HangUpWatch> watch_;  // once the port was opened
    bool lost_ = false;
};

}  // namespace Tamber
