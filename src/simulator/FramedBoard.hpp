#pragma once

#include <deque>

#include "simulator/BoardLine.hpp"
#include "simulator/BoardTrace.hpp"
#include "simulator/Frame.hpp"

namespace Tamber::Simulator {

/// What the boards have in common: they cut the host's bytes into frames, keep each answer until
/// it is due, and trace.
class FramedBoard : public BoardLine {
  public:
    void Receive(std::span<const std::uint8_t> bytes) override;
    std::optional<std::chrono::microseconds> NextDue() const override;
    void Take(std::vector<std::uint8_t>& bytes) override;
    bool HungUp() const override { return leaving_ && answers_.empty() && unasked_.empty(); }

    /// Acts on a frame; what it answers waits for Take.
    virtual void Obey(const Frame& frame) = 0;

    /// Forgets what the host has told it, as when its power fails; the device stays as it is.
    virtual void Reset() {}

  protected:
    /// An empty `trace` writes none.
    FramedBoard(BoardClock clock, BoardTrace trace);

    /// Sends `bytes` after `delay`, but not before what was answered earlier.
    void Answer(std::vector<std::uint8_t> bytes, std::chrono::microseconds delay = {});

    /// Sends `bytes` after `delay`, whatever is answered meanwhile.
    void Interject(std::vector<std::uint8_t> bytes, std::chrono::microseconds delay);

    /// Hangs up once everything answered has been taken.
    void Leave() { leaving_ = true; }

    std::chrono::microseconds Now() const { return clock_(); }

    /// Writes a line of trace for what happens `delay` from now.
    void Trace(char mark, std::span<const std::uint8_t> bytes, const std::string& gloss,
               std::chrono::microseconds delay = {}) const;

  private:
    struct TimedBytes {
        std::chrono::microseconds Due;
        std::vector<std::uint8_t> Bytes;
    };

    bool UnaskedFirst() const;

    BoardClock clock_;
    BoardTrace trace_;
    FrameReader reader_;
    std::deque<TimedBytes> answers_;
    std::deque<TimedBytes> unasked_;  // in the order in which they are due
    bool leaving_ = false;
};

}  // namespace Tamber::Simulator
