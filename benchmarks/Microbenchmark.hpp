#pragma once

#include <functional>

namespace Tamber::Bench {

/// What one go at a piece of work takes, in seconds: the median over all repetitions.
struct Medians {
    double Program = 0;
    double Yardstick = 0;
};

/// Measures work that is too short to be measured one go at a time, and its yardstick: each is
/// repeated `repetitions` times, in an order thrown anew, as often in a row as its length asks for.
Medians CompareShort(int repetitions, const std::function<void()>& program,
                     const std::function<void()>& yardstick);

}  // namespace Tamber::Bench
