#pragma once

#include <utility>

#include "platform/SerialControl.hpp"
#include "simulator/BoardLine.hpp"

namespace Tamber::Cli {

/// A board inside the program, where a port would be. Its replies are there as soon as they are
/// due.
class SimulatedControl final : public SerialControl {
  public:
    /// `board` outlives the control.
    explicit SimulatedControl(Simulator::BoardLine& board) : board_(board) {}

    tl::expected<void, std::string> PortOpen(const std::filesystem::path&) override {
        open_ = true;
        return {};
    }
    void Output(std::span<const std::uint8_t> bytes) override {
        if (open_ && !board_.HungUp())
            board_.Receive(bytes);
    }
    int InBufferCount() override {
        TakeIn();
        return static_cast<int>(received_.size());
    }
    void TakeIn() override {
        if (open_)
            board_.Take(received_);
    }
    void Input(std::vector<std::uint8_t>& bytes) override {
        TakeIn();
        bytes = std::exchange(received_, {});
    }
    bool PortLost() const override { return open_ && board_.HungUp(); }

  private:
    Simulator::BoardLine& board_;
    std::vector<std::uint8_t> received_;
    bool open_ = false;
};

}  // namespace Tamber::Cli
