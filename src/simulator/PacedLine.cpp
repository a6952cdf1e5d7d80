#include "simulator/PacedLine.hpp"

#include <algorithm>
#include <utility>

namespace Tamber::Simulator {

PacedLine::PacedLine(BoardLine& inner, BoardClock clock, unsigned baud)
    : inner_(inner), clock_(std::move(clock)), byteTime_(10'000'000'000 / baud) {}

void PacedLine::Receive(std::span<const std::uint8_t> bytes) {
    const Time now = clock_();
    for (const auto byte : bytes) {
        toBoardFree_ = std::max(toBoardFree_, now) + byteTime_;
        toBoard_.push_back({toBoardFree_, byte});
    }
}

std::optional<std::chrono::microseconds> PacedLine::NextDue() const {
    auto next = inner_.NextDue();
    for (const auto* const wire : {&toBoard_, &toHost_}) {
        if (wire->empty())
            continue;
        const auto due = std::chrono::ceil<std::chrono::microseconds>(wire->front().Due);
        next = std::min(next.value_or(due), due);
    }
    return next;
}

void PacedLine::Take(std::vector<std::uint8_t>& bytes) {
    const Time now = clock_();
    Advance(now);
    for (; !toHost_.empty() && toHost_.front().Due <= now; toHost_.pop_front())
        bytes.push_back(toHost_.front().Value);
}

// A reply starts at the moment the byte that completed its request arrived, or at the moment the
// board had it ready, even when Take is called a little late: delays do not add up.
void PacedLine::Advance(Time now) {
    for (;;) {
        const std::optional<Time> ready = inner_.NextDue();
        const bool arrives = !toBoard_.empty() && toBoard_.front().Due <= now;
        if (ready && *ready <= now && (!arrives || *ready <= toBoard_.front().Due)) {
            Collect(*ready);
        } else if (arrives) {
            const auto [due, value] = toBoard_.front();
            toBoard_.pop_front();
            inner_.Receive({&value, 1});
            Collect(due);
        } else {
            return;
        }
    }
}

void PacedLine::Collect(Time from) {
    std::vector<std::uint8_t> replies;
    inner_.Take(replies);
    for (const auto byte : replies) {
        toHostFree_ = std::max(toHostFree_, from) + byteTime_;
        toHost_.push_back({toHostFree_, byte});
    }
}

}  // namespace Tamber::Simulator
