#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace Tamber::Bench {

/// The yardstick for HEX files: what a plain reader and writer with a table of digits takes.
using Memory = std::array<std::uint8_t, 1 << 17>;

/// Reads a HEX text into `memory`, which is written as the lines come. False at a bad line or when
/// the end record is missing.
bool ReadHex(std::string_view text, Memory& memory);

/// Adds the records of `length` bytes from `from` on to `text`, 16 bytes each.
void AppendHex(std::string& text, const std::uint8_t* memory, unsigned from, unsigned length);

/// The closing record.
constexpr std::string_view EndRecord = ":00000001FF\r\n";

}  // namespace Tamber::Bench
