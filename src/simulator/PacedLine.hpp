#pragma once

#include <deque>

#include "simulator/BoardLine.hpp"

namespace Tamber::Simulator {

/// Connects a board through a serial line of a given speed: every byte, in either direction, takes
/// ten bit times (start bit, eight data bits, stop bit), one after the other. The board sees a byte
/// when its last bit has arrived, and so does the host. It belongs outside a FaultyBoard.
class PacedLine : public BoardLine {
  public:
    /// `inner` must outlive this line and go by the same clock. `baud` is in bits per second, at
    /// least 1.
    PacedLine(BoardLine& inner, BoardClock clock, unsigned baud);

    void Receive(std::span<const std::uint8_t> bytes) override;
    std::optional<std::chrono::microseconds> NextDue() const override;
    void Take(std::vector<std::uint8_t>& bytes) override;
    bool Reads() const override { return inner_.Reads(); }
    /// False while reply bytes are still on their way.
    bool HungUp() const override { return inner_.HungUp() && toHost_.empty(); }

  private:
    // A byte at 57600 baud takes 173.6 microseconds: counted in microseconds, a long transfer
    // would drift.
    using Time = std::chrono::nanoseconds;

    struct TimedByte {
        Time Due;
        std::uint8_t Value;
    };

    void Advance(Time now);
    void Collect(Time from);

    BoardLine& inner_;
    BoardClock clock_;
    Time byteTime_;
    std::deque<TimedByte> toBoard_;
    std::deque<TimedByte> toHost_;
    Time toBoardFree_{};
    Time toHostFree_{};
};

}  // namespace Tamber::Simulator
