#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace Tamber {

/// `value` as exactly two upper-case hexadecimal digits: 0x0A gives "0A".
std::string HexByte(std::uint8_t value);

/// `value` in upper-case hexadecimal, padded with zeros to four digits; from 0x10000 up it is
/// written in full. Used for addresses and checksums.
std::string HexWord(std::uint32_t value);

/// `value` in upper-case hexadecimal without leading zeros: 1024 gives "400", 0 gives "0".
std::string HexNumber(std::uint32_t value);

/// The same digits as HexByte and HexWord, added to the end of `text`.
void AppendHexByte(std::string& text, std::uint8_t value);
void AppendHexWord(std::string& text, std::uint32_t value);

/// The values of the hexadecimal digits of either case by their character, -1 for all others.
inline constexpr std::array<std::int8_t, 256> HexDigitValues = [] {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (int digit = 0; digit < 10; ++digit)
        values[static_cast<std::size_t>('0' + digit)] = static_cast<std::int8_t>(digit);
    for (int digit = 0; digit < 6; ++digit) {
        values[static_cast<std::size_t>('A' + digit)] = static_cast<std::int8_t>(10 + digit);
        values[static_cast<std::size_t>('a' + digit)] = static_cast<std::int8_t>(10 + digit);
    }
    return values;
}();

/// The value of a hexadecimal digit of either case (0..15), or -1 for any other character.
constexpr int HexDigitValue(char digit) {
    return HexDigitValues[static_cast<unsigned char>(digit)];
}

}  // namespace Tamber
