#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace Tamber {

/// One line of an Intel HEX file. Positions count from 1; character 1, normally ":", is not looked
/// at. Every field is hexadecimal of either case and has the value of its leading digits, 0 when
/// there are none. The address alone must be four digits.
struct HexRecord {
    static constexpr int DataMax = 51;
    static constexpr std::size_t LengthMin = 7;  ///< characters up to the end of the address
    static constexpr std::size_t TypeEnd = 9;    ///< and up to the end of the record type

    static constexpr std::int16_t DataType = 0;
    static constexpr std::int16_t EndType = 1;

    std::string_view Line;                     ///< without its line end
    std::int32_t Address = 0;                  ///< characters 4-7, a byte address
    std::int16_t ByteCount = 0;                ///< characters 2-3
    std::int16_t Type = 0;                     ///< characters 8-9
    std::uint8_t Checksum = 0;                 ///< the last two characters
    bool ChecksumGood = false;                 ///< all bytes of the line sum to 0 modulo 256
    std::array<std::uint8_t, DataMax> Data{};  ///< from character 10 on, then zeros
};

/// Takes a line apart into `record`, a fresh one. Data past the line's end read as 0. Where
/// ByteCount is above DataMax, only DataMax bytes are set. False when the address does not read as
/// a number.
[[nodiscard]] bool ParseHexRecord(std::string_view line, HexRecord& record);

}  // namespace Tamber
