#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "simulator/BoardEngine.hpp"

namespace Tamber::Simulator {

using Bytes = std::vector<std::uint8_t>;
using testing::ElementsAre;
using testing::IsEmpty;

/// A clock that a test sets.
struct HandClock {
    std::chrono::microseconds now{};

    BoardClock Reading() {
        return [this] { return now; };
    }
};

inline Bytes Command(char letter) {
    return {1, static_cast<std::uint8_t>(letter)};
}

inline Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline Bytes ReadRequest(unsigned address) {
    return Command('R') + Bytes{4, static_cast<std::uint8_t>(address >> 8),
                                static_cast<std::uint8_t>(address & 0xFF), 0, 1};
}

inline Bytes WriteRequest(unsigned address, std::uint8_t words, const Bytes& data) {
    return Bytes{20, static_cast<std::uint8_t>(address >> 8),
                 static_cast<std::uint8_t>(address & 0xFF), 0, words} +
           data;
}

/// Sixteen bytes counting up from `first`.
inline Bytes Counting(std::uint8_t first) {
    Bytes bytes;
    for (int i = 0; i < 16; ++i)
        bytes.push_back(first++);
    return bytes;
}

/// Sends `request` and gives what is answered at once.
inline Bytes Ask(BoardLine& line, const Bytes& request) {
    line.Receive(request);
    Bytes reply;
    line.Take(reply);
    return reply;
}

inline const Bytes Identity{10, 'T', 'A', 'M', 'B', 'R', ' ', ' ', '1', '0'};

}  // namespace Tamber::Simulator
