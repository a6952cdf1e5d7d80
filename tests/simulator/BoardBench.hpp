#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulator/BoardEngine.hpp"

namespace Tamber::Simulator {

using Bytes = std::vector<std::uint8_t>;
using testing::IsEmpty;
using namespace std::chrono_literals;

/// A clock that a test sets.
struct HandClock {
    std::chrono::microseconds now{};
    BoardClock Reading() {
        return [this] { return now; };
    }
};

inline Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline Bytes Command(char letter) {
    return {1, static_cast<std::uint8_t>(letter)};
}

/// The head of a frame with this count byte: the address, high byte first, and the word count.
inline Bytes Addressed(std::uint8_t count, unsigned address, std::uint8_t words) {
    return {count, static_cast<std::uint8_t>(address >> 8), static_cast<std::uint8_t>(address), 0,
            words};
}

inline Bytes ReadRequest(unsigned address) {
    return Command('R') + Addressed(4, address, 1);
}

/// Sends `request` and returns what is answered at once.
inline Bytes Ask(BoardLine& line, const Bytes& request) {
    line.Receive(request);
    Bytes reply;
    line.Take(reply);
    return reply;
}

inline const Bytes Identity{10, 'T', 'A', 'M', 'B', 'R', ' ', ' ', '1', '0'};

}  // namespace Tamber::Simulator
