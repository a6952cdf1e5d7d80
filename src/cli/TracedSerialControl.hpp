#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/SerialControl.hpp"

namespace Tamber::Cli {

/// Writes down what passes a serial port, in the form of the simulated board's traces: a line
/// `TIME > BYTES ; GLOSS` for every frame, `TIME < BYTES ; GLOSS` for what came in answer, with the
/// time at which the last byte of it was there, and a `!` line when the port has gone away.
class TracedSerialControl final : public SerialControl {
  public:
    using Clock = std::function<std::chrono::microseconds()>;
    using LineSink = std::function<void(const std::string&)>;

    /// `port` is the port traced. `sink` takes the lines, without line ends; `clock` gives the time
    /// they bear.
    TracedSerialControl(std::unique_ptr<SerialControl> port, Clock clock, LineSink sink);
    ~TracedSerialControl() override;

    [[nodiscard]] tl::expected<void, std::string> PortOpen(
        const std::filesystem::path& path) override;
    void Output(std::span<const std::uint8_t> bytes) override;
    int InBufferCount() override;
    void TakeIn() override { port_->TakeIn(); }
    void Input(std::vector<std::uint8_t>& bytes) override;
    bool PortLost() const override { return port_->PortLost(); }

  private:
    void Collect();
    void WriteReply();

    std::unique_ptr<SerialControl> port_;
    Clock clock_;
    LineSink sink_;
    std::vector<std::uint8_t> waiting_;
    std::size_t written_ = 0;  // of the waiting bytes, those that are in the trace already
    std::chrono::microseconds lastArrival_{};
};

}  // namespace Tamber::Cli
