#include "files/HexRecord.hpp"

#include <algorithm>

#include "core/HexText.hpp"

namespace Tamber {
namespace {

// Where the address and the data begin, counted from 0: behind ":", byte count, address and record
// type.
constexpr std::size_t AddressIndex = 3;
constexpr std::size_t DataIndex = 9;

// The value of two characters by their leading digits.
std::uint8_t PairValue(char first, char second) {
    const int high = HexDigitValue(first);
    const int low = HexDigitValue(second);
    if ((high | low) >= 0)  // both are digits, as nearly all are
        return static_cast<std::uint8_t>(high << 4 | low);
    return static_cast<std::uint8_t>(std::max(high, 0));
}

// The same of those at `index` (from 0); the line may end between them.
std::uint8_t PairValue(std::string_view line, std::size_t index) {
    return PairValue(line[index], index + 1 < line.size() ? line[index + 1] : '\0');
}

// The four digits at `index`, below 0 when one of them is none.
std::int32_t FourDigits(std::string_view line, std::size_t index) {
    const int first = HexDigitValue(line[index]);
    const int second = HexDigitValue(line[index + 1]);
    const int third = HexDigitValue(line[index + 2]);
    const int fourth = HexDigitValue(line[index + 3]);
    if ((first | second | third | fourth) < 0)
        return -1;
    return first << 12 | second << 8 | third << 4 | fourth;
}

}  // namespace

bool ParseHexRecord(std::string_view line, HexRecord& record) {
    if (line.size() < HexRecord::LengthMin)
        return false;
    record.Address = FourDigits(line, AddressIndex);
    if (record.Address < 0)
        return false;
    record.Line = line;
    record.ByteCount = PairValue(line[1], line[2]);
    record.Type = line.size() > 7 ? PairValue(line, 7) : std::uint8_t{0};
    record.Checksum = PairValue(line[line.size() - 2], line[line.size() - 1]);

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
    const std::string_view digits = line.substr(std::min(DataIndex, line.size()));
    const std::size_t pairs = digits.empty() ? 0 : (digits.size() - 1) / 2;
    const std::size_t dataPairs = std::min(pairs, dataBytes);
    for (std::size_t pair = 0; pair < dataPairs; ++pair)
        sum += record.Data[pair] = PairValue(digits[2 * pair], digits[2 * pair + 1]);
    for (std::size_t pair = dataPairs; pair < pairs; ++pair)
        sum += PairValue(digits[2 * pair], digits[2 * pair + 1]);
    if (pairs < dataBytes && 2 * pairs < digits.size())
        record.Data[pairs] = PairValue(digits, 2 * pairs);
    record.ChecksumGood = sum % 256 == 0;
    return true;
}

}  // namespace Tamber
