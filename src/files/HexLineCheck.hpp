#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Tamber {

/// What is wrong with a line of a HEX file.
struct HexFinding {
    int Line = 0;        ///< 1-based
    int Column = 0;      ///< 1-based; 0 when the whole line is meant
    std::string Wrong;   ///< what stands there and what should
    std::string Remedy;  ///< what to do about it

    bool operator==(const HexFinding&) const = default;
};

/// Looks at one line, without its line end, by the letter of the Intel HEX format, where the loader
/// is content with less. Gives the first thing that is wrong, its Line left at 0, or nothing. With
/// `countsWords` the byte count is taken for a count of 16-bit words.
std::optional<HexFinding> CheckHexLine(std::string_view line, bool countsWords = false);

}  // namespace Tamber
