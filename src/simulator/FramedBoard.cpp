#include "simulator/FramedBoard.hpp"

#include <algorithm>
#include <utility>

namespace Tamber::Simulator {

FramedBoard::FramedBoard(BoardClock clock, BoardTrace trace)
    : clock_(std::move(clock)), trace_(std::move(trace)) {}

void FramedBoard::Receive(std::span<const std::uint8_t> bytes) {
    for (const auto& frame : reader_.Feed(bytes, Now()))
        if (!leaving_)
            Obey(frame);
}

bool FramedBoard::UnaskedFirst() const {
    return !unasked_.empty() && (answers_.empty() || unasked_.front().Due < answers_.front().Due);
}

std::optional<std::chrono::microseconds> FramedBoard::NextDue() const {
    const auto& next = UnaskedFirst() ? unasked_ : answers_;
    if (next.empty())
        return std::nullopt;
    return next.front().Due;
}

void FramedBoard::Take(std::vector<std::uint8_t>& bytes) {
    for (const auto now = Now();
         FramedBoard::NextDue().value_or(std::chrono::microseconds::max()) <= now;) {
        auto& next = UnaskedFirst() ? unasked_ : answers_;
        bytes.insert(bytes.end(), next.front().Bytes.begin(), next.front().Bytes.end());
        next.pop_front();
    }
}

void FramedBoard::Answer(std::vector<std::uint8_t> bytes, std::chrono::microseconds delay) {
    if (!bytes.empty())
        answers_.push_back({Now() + delay, std::move(bytes)});
}

void FramedBoard::Interject(std::vector<std::uint8_t> bytes, std::chrono::microseconds delay) {
    const auto due = Now() + delay;
    const auto next = std::ranges::upper_bound(unasked_, due, {}, &TimedBytes::Due);
    unasked_.insert(next, {due, std::move(bytes)});
}

void FramedBoard::Trace(char mark, std::span<const std::uint8_t> bytes, const std::string& gloss,
                        std::chrono::microseconds delay) const {
    if (trace_)
        trace_(TraceLine(Now() + delay, mark, bytes, gloss));
}

}  // namespace Tamber::Simulator
