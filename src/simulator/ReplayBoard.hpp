#pragma once

#include <tl/expected.hpp>

#include "simulator/FramedBoard.hpp"
#include "simulator/LineFailure.hpp"

namespace Tamber::Simulator {

/// One frame of a traced host, and what the host got before it sent the next.
struct TracedExchange {
    struct Answer {
        std::chrono::microseconds Delay{};  ///< after the frame
        std::vector<std::uint8_t> Bytes;
    };

    std::chrono::microseconds Time{};  ///< of the frame, as traced
    std::vector<std::uint8_t> Frame;   ///< empty: what came before the first one
    std::vector<Answer> Answers;
    bool HungUp = false;  ///< the board was gone from the line after the answers
};

/// Reads a trace in the form of BoardTrace. A `!` line takes the place of the `<` line before it;
/// one whose gloss says "hung up" ends the trace. Empty lines and lines that begin with # are
/// ignored.
[[nodiscard]] tl::expected<std::vector<TracedExchange>, LineFailure> ReadTrace(
    const std::string& text);

/// A board that answers as the one in a trace did: the same bytes to the same frames, after the
/// same time. The host may leave out frames of the trace; a frame that does not occur in the rest
/// of the trace is not answered.
class ReplayBoard : public FramedBoard {
  public:
    ReplayBoard(BoardClock clock, std::vector<TracedExchange> exchanges, BoardTrace trace = {});

    void Obey(const Frame& frame) override;

  private:
    void AnswerAs(const TracedExchange& exchange);

    std::vector<TracedExchange> exchanges_;
    std::size_t next_ = 0;
};

}  // namespace Tamber::Simulator
