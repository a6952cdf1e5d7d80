#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "files/LineReader.hpp"

namespace Tamber {

/// Why an Intel HEX file cannot be loaded.
enum class HexFault {
    ChecksumError,   ///< a line before the end record does not sum to 0
    NoEndRecord,     ///< the file ended without one
    AddressError,    ///< a line whose address field does not read as a number
    TooManyBytes,    ///< a data record of more than HexRecord::DataMax bytes
    TooManyLines,    ///< more than HexRecordTableMax lines up to and with the end record
    FileUnreadable,  ///< the file cannot be opened or read
};

/// The most lines that a HEX file may have, the end record's included.
constexpr int HexRecordTableMax = 10'000;

/// One line of an Intel HEX file. Positions count from 1; character 1, normally ":", is not looked
/// at. Every field is hexadecimal of either case and has the value of its leading digits, 0 when
/// there are none. The address alone must be four digits.
struct HexRecord {
    static constexpr int DataMax = 51;
    static constexpr std::size_t DataIndex = 9;           ///< characters before the data
    static constexpr std::size_t LengthWithoutData = 11;  ///< of a well-formed line

    static constexpr std::int16_t DataType = 0;
    static constexpr std::int16_t EndType = 1;

    /// Takes the next of `lines` apart.
    explicit HexRecord(LineReader& lines) : Line(lines.Next()) {
        Fault = TakeApart();
        if (lines.Number() > HexRecordTableMax)
            Fault = HexFault::TooManyLines;
    }

    /// The loader stores its data.
    bool HoldsData() const { return Type == DataType && ChecksumGood && ByteCount <= DataMax; }

    /// How many bytes of data the line has room for, whatever its byte count says.
    int BytesOnLine() const {
        return static_cast<int>((std::max(Line.size(), LengthWithoutData) - LengthWithoutData) / 2);
    }

    /// The byte count of a data record is right as a count of 16-bit words.
    bool CountsWords() const {
        return Type == DataType && ByteCount > 0 && BytesOnLine() == 2 * ByteCount;
    }

    std::string_view Line;                     ///< without its line end
    std::int32_t Address = -1;                 ///< characters 4-7, a byte address; -1: no record
    std::int16_t ByteCount = 0;                ///< characters 2-3
    std::int16_t Type = 0;                     ///< characters 8-9
    std::uint8_t Checksum = 0;                 ///< the last two characters
    bool ChecksumGood = false;                 ///< all bytes of the line sum to 0 modulo 256
    std::optional<HexFault> Fault;             ///< why the loader refuses the line
    std::array<std::uint8_t, DataMax> Data{};  ///< from character 10 on, then zeros

  private:
    std::optional<HexFault> TakeApart();
};

}  // namespace Tamber
