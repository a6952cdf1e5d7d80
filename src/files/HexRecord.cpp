#include "files/HexRecord.hpp"

#include <algorithm>

#include "core/HexText.hpp"

namespace Tamber {
namespace {

// Where fields begin, counted from 0.
constexpr std::size_t AddressIndex = 3;
constexpr std::size_t TypeIndex = 7;

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

std::optional<HexFault> HexRecord::TakeApart() {
    if (Line.size() < TypeIndex)
        return HexFault::AddressError;
    Address = FourDigits(Line, AddressIndex);
    if (Address < 0)
        return HexFault::AddressError;
    ByteCount = PairValue(Line[1], Line[2]);
    Type = Line.size() > TypeIndex ? PairValue(Line, TypeIndex) : std::uint8_t{0};
    Checksum = PairValue(Line[Line.size() - 2], Line[Line.size() - 1]);

    // The pairs that lie wholly before the last character count into the sum: on a well-formed line
    // all but the checksum itself.
    auto sum = static_cast<std::uint8_t>(Checksum + ByteCount + (Address >> 8));
    const auto add = [&](int value) { sum = static_cast<std::uint8_t>(sum + value); };
    if (Line.size() > TypeIndex)
        add(Address);
    if (Line.size() > DataIndex)
        add(Type);
    const auto dataBytes = static_cast<std::size_t>(std::min<int>(ByteCount, DataMax));
    const std::string_view digits = Line.substr(std::min(DataIndex, Line.size()));
    const std::size_t pairs = digits.empty() ? 0 : (digits.size() - 1) / 2;
    const std::size_t dataPairs = std::min(pairs, dataBytes);
    for (std::size_t pair = 0; pair < dataPairs; ++pair)
        add(Data[pair] = PairValue(digits[2 * pair], digits[2 * pair + 1]));
    for (std::size_t pair = dataPairs; pair < pairs; ++pair)
        add(PairValue(digits[2 * pair], digits[2 * pair + 1]));
    if (pairs < dataBytes && 2 * pairs < digits.size())
        Data[pairs] = PairValue(digits, 2 * pairs);
    ChecksumGood = sum == 0;

    if (Type == DataType && ByteCount > DataMax)
        return HexFault::TooManyBytes;
    if (!ChecksumGood && Type != EndType)
        return HexFault::ChecksumError;
    return std::nullopt;
}

}  // namespace Tamber
