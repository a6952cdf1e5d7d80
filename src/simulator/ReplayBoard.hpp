#pragma once

#include <deque>
#include <string>
#include <variant>

#include "simulator/BoardLine.hpp"
#include "simulator/BoardTrace.hpp"
#include "simulator/Frame.hpp"

namespace Tamber::Simulator {

/// One frame of a traced host, and what the host got before it sent the next.
struct TracedExchange {
    struct Answer {
        std::chrono::microseconds delay{};  ///< after the frame
        std::vector<std::uint8_t> bytes;
    };

    std::vector<std::uint8_t> frame;  ///< empty: what came before the first one
    std::vector<Answer> answers;
    bool hungUp = false;  ///< the board was gone from the line after the answers
};

/// A line of a trace that cannot be understood.
struct TraceFault {
    int line = 0;  ///< from 1
    std::string cause;
};

/// Takes a trace in the form of BoardTrace apart. A `!` line takes the place of the `<` line before
/// it; one whose gloss says "hung up" ends the trace. Empty lines and lines that begin with # are
/// passed over.
[[nodiscard]] std::variant<std::vector<TracedExchange>, TraceFault> ReadTrace(
    std::string_view text);

/// A board that answers as the one in a trace did: the same bytes to the same frames, after the
/// same time. A host that leaves out frames of the trace is followed; a frame that does not occur
/// in the rest of the trace is not answered.
class ReplayBoard : public BoardLine {
  public:
    ReplayBoard(BoardClock clock, std::vector<TracedExchange> exchanges, BoardTrace trace = {});

    void Receive(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::optional<std::chrono::microseconds> NextDue() const override;
    void Take(std::vector<std::uint8_t>& bytes) override;
    [[nodiscard]] bool HungUp() const override { return leaving_ && toHost_.empty(); }

  private:
    struct TimedBytes {
        std::chrono::microseconds due{};
        std::vector<std::uint8_t> bytes;
    };

    void Obey(const Frame& frame);
    void Answer(const TracedExchange& exchange);
    void Trace(char mark, std::span<const std::uint8_t> bytes, const std::string& gloss) const;

    BoardClock clock_;
    std::vector<TracedExchange> exchanges_;
    std::size_t next_ = 0;
    BoardTrace trace_;
    FrameReader reader_;
    std::deque<TimedBytes> toHost_;
    bool leaving_ = false;
};

}  // namespace Tamber::Simulator
