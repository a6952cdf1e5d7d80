#pragma once

#include <cstdint>
#include <string>

namespace Tamber::Bench {

/// The yardstick for the program-memory view: sixteen rows of text straight from a table of digits.
std::string DumpRows(const std::uint8_t* memory, unsigned topRow);

/// The sum of `count` bytes modulo 65,536.
std::uint16_t SumOf(const std::uint8_t* memory, unsigned count);

}  // namespace Tamber::Bench
