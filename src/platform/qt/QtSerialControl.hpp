#pragma once

#include <QSerialPort>
#include <filesystem>

#include "platform/SerialControl.hpp"
#include "platform/qt/QtEventDelivery.hpp"

namespace Tamber {

/// The serial port of the operating system. Every request goes out at once, in one write. A port
/// that goes away (an adapter pulled out) is closed; from then on nothing is sent or received.
class QtSerialControl final : public SerialControl {
  public:
    /// Ports named by files or links are looked for in `directory`; `events` learns of received
    /// bytes from the port.
    QtSerialControl(std::filesystem::path directory, QtEventDelivery& events);

    [[nodiscard]] std::optional<std::string> PortOpen(int commPort,
                                                      std::string_view settings) override;
    void Output(std::span<const std::uint8_t> bytes) override;
    int InBufferCount() override;
    void Input(std::vector<std::uint8_t>& bytes) override;

  private:
    std::filesystem::path directory_;
    QSerialPort port_;
};

}  // namespace Tamber
