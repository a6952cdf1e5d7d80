#pragma once

#include <QSerialPort>
#include <filesystem>
#include <memory>
#include <utility>

#include "platform/SerialControl.hpp"
#include "platform/qt/HangUpWatch.hpp"
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
    bool PortLost() const override;

    /// From now on PortOpen opens `path`, whatever number it is given.
    void UsePath(std::filesystem::path path) { path_ = std::move(path); }

  private:
    void LosePort();

    std::filesystem::path directory_;
    std::filesystem::path path_;  // empty: what the number stands for
    QSerialPort port_;
    std::unique_ptr<HangUpWatch> watch_;  // once the port was opened
    bool lost_ = false;
};

}  // namespace Tamber
