#include "simulator/ReplayBoard.hpp"

#include <algorithm>
#include <utility>

namespace Tamber::Simulator {

ReplayBoard::ReplayBoard(BoardClock clock, std::vector<TracedExchange> exchanges, BoardTrace trace)
    : clock_(std::move(clock)), exchanges_(std::move(exchanges)), trace_(std::move(trace)) {
    if (!exchanges_.empty() && exchanges_.front().frame.empty())
        Answer(exchanges_[next_++]);
}

void ReplayBoard::Receive(std::span<const std::uint8_t> bytes) {
    for (const auto& frame : reader_.Feed(bytes, clock_()))
        Obey(frame);
}

void ReplayBoard::Obey(const Frame& frame) {
    if (leaving_)
        return;
    const auto begin = exchanges_.begin() + static_cast<std::ptrdiff_t>(next_);
    const auto found = std::find_if(begin, exchanges_.end(), [&](const TracedExchange& exchange) {
        return exchange.frame == frame.bytes;
    });
    if (found == exchanges_.end()) {
        Trace('>', frame.bytes, "not in the rest of the trace");
        return;
    }
    const auto skipped = found - begin;
    Trace('>', frame.bytes,
          skipped == 0 ? "as traced" : "as traced, " + std::to_string(skipped) + " frames on");
    next_ += static_cast<std::size_t>(skipped) + 1;
    Answer(*found);
}

void ReplayBoard::Answer(const TracedExchange& exchange) {
    const auto now = clock_();
    for (const auto& [delay, bytes] : exchange.answers) {
        const auto earliest = toHost_.empty() ? now : toHost_.back().due;
        toHost_.push_back({std::max(now + delay, earliest), bytes});
        Trace('<', bytes, "as traced");
    }
    leaving_ = exchange.hungUp;
    if (leaving_)
        Trace('!', {}, "hung up, as traced");
}

std::optional<std::chrono::microseconds> ReplayBoard::NextDue() const {
    if (toHost_.empty())
        return std::nullopt;
    return toHost_.front().due;
}

void ReplayBoard::Take(std::vector<std::uint8_t>& bytes) {
    const auto now = clock_();
    for (; !toHost_.empty() && toHost_.front().due <= now; toHost_.pop_front())
        bytes.insert(bytes.end(), toHost_.front().bytes.begin(), toHost_.front().bytes.end());
}

void ReplayBoard::Trace(char mark, std::span<const std::uint8_t> bytes,
                        const std::string& gloss) const {
    if (trace_)
        trace_(TraceLine(clock_(), mark, bytes, gloss));
}

}  // namespace Tamber::Simulator
