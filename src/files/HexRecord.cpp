#include "files/HexRecord.hpp"

#include <algorithm>

#include "core/HexText.hpp"

namespace Tamber {
namespace {

// Where the data begin, counted from 0: behind ":", byte count, address and record type.
constexpr std::size_t DataIndex = 9;

// The value of the two characters at `index` (from 0), by its leading digits.
std::uint8_t PairValue(std::string_view line, std::size_t index) {
    const int high = HexDigitValue(line[index]);
    if (high < 0)
        return 0;
    const int low = index + 1 < line.size() ? HexDigitValue(line[index + 1]) : -1;
    return static_cast<std::uint8_t>(low < 0 ? high : high * 16 + low);
}

bool HoldsAddress(std::string_view line) {
    return line.size() >= HexRecord::LengthMin &&
           std::ranges::all_of(line.substr(3, 4),
                               [](char digit) { return HexDigitValue(digit) >= 0; });
}

}  // namespace

std::optional<HexRecord> ParseHexRecord(std::string_view line) {
    if (!HoldsAddress(line))
        return std::nullopt;
    std::optional<HexRecord> parsed(std::in_place);
    HexRecord& record = *parsed;
    record.Line = line;
    record.ByteCount = PairValue(line, 1);
    record.Address = PairValue(line, 3) << 8 | PairValue(line, 5);
    record.Type = line.size() > 7 ? PairValue(line, 7) : std::uint8_t{0};
    record.Checksum = PairValue(line, line.size() - 2);

    // The pairs that lie wholly before the last character count into the sum: on a well-formed line
    // all but the checksum itself.
    unsigned sum = record.Checksum;
    sum += static_cast<unsigned>(record.ByteCount);
    sum += static_cast<unsigned>(record.Address >> 8);
    if (line.size() > 7)
        sum += static_cast<unsigned>(record.Address & 0xFF);
    if (line.size() > 9)
        sum += static_cast<unsigned>(record.Type);
    const auto dataBytes =
        static_cast<std::size_t>(std::min<int>(record.ByteCount, HexRecord::DataMax));
    std::size_t data = 0;
    for (std::size_t index = DataIndex; index < line.size(); index += 2) {
        const std::uint8_t value = PairValue(line, index);
        if (index + 2 < line.size())
            sum += value;
        if (data < dataBytes)
            record.Data[data++] = value;
    }
    record.ChecksumGood = sum % 256 == 0;
    return parsed;
}

}  // namespace Tamber
