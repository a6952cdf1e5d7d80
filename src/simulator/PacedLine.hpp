#pragma once

#include <deque>

#include "simulator/BoardLine.hpp"

namespace Tamber::Simulator {

/// Puts a board behind a serial line of a given speed: every byte, in either direction, takes ten
/// bit times (start bit, eight data bits, stop bit), one after the other. The board sees a byte
/// when its last bit has come, and a reply byte is due at the host in the same way. It belongs
/// outside a FaultyBoard.
class PacedLine : public BoardLine {
  public:
    /// `inner` must outlive this line and go by the same clock. `baud` is in bits per second, at
    /// least 1.
    PacedLine(BoardLine& inner, BoardClock clock, unsigned baud);

    void Receive(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::optional<std::chrono::microseconds> NextDue() const override;
    void Take(std::vector<std::uint8_t>& bytes) override;
    /// False as long as reply bytes are still on their way.
    [[nodiscard]] bool HungUp() const override { return inner_.HungUp() && toHost_.empty(); }

  private:
    // A byte at 57600 baud takes 173.6 microseconds: counted in microseconds, a long transfer
    // would drift.
    using Time = std::chrono::nanoseconds;

    struct TimedByte {
        Time due;
        std::uint8_t value;
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
