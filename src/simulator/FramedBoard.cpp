#include "simulator/FramedBoard.hpp"

#include <utility>

namespace Tamber::Simulator {

FramedBoard::FramedBoard(BoardClock clock, BoardTrace trace)
    : clock_(std::move(clock)), trace_(std::move(trace)) {}

void FramedBoard::Receive(std::span<const std::uint8_t> bytes) {
    for (const auto& frame : reader_.Feed(bytes, Now()))
        if (!leaving_)
            Obey(frame);
}

std::optional<std::chrono::microseconds> FramedBoard::NextDue() const {
    if (answers_.empty())
        return std::nullopt;
    return answers_.front().Due;
}

void FramedBoard::Take(std::vector<std::uint8_t>& bytes) {
    const auto now = Now();
    for (; !answers_.empty() && answers_.front().Due <= now; answers_.pop_front())
        bytes.insert(bytes.end(), answers_.front().Bytes.begin(), answers_.front().Bytes.end());
}

void FramedBoard::Answer(std::vector<std::uint8_t> bytes, std::chrono::microseconds delay) {
    if (!bytes.empty())
        answers_.push_back({Now() + delay, std::move(bytes)});
}

void FramedBoard::Trace(char mark, std::span<const std::uint8_t> bytes, const std::string& gloss,
                        std::chrono::microseconds delay) const {
    if (trace_)
        trace_(TraceLine(Now() + delay, mark, bytes, gloss));
}

}  // namespace Tamber::Simulator
