#pragma once

#include <optional>
#include <string>

namespace Tamber {

/// A sign that the replies on the line are out of step with the requests, or not whole. What was
/// read since, and what the next exchange reads, may be something else than it is taken for.
struct LineFinding {
    int UnaskedBytes = 0;           ///< more came than was asked for
    std::optional<int> WrongCount;  ///< the length that a block's reply of 17 bytes says it has
};

/// "3 bytes came that nobody asked for"
std::string Describe(const LineFinding& finding);

}  // namespace Tamber
