#include "simulator/HexText.hpp"

namespace Tamber::Simulator {

namespace {

constexpr std::string_view Digits = "0123456789ABCDEF";

std::optional<unsigned> DigitValue(char digit) {
    const char upper = digit >= 'a' && digit <= 'f' ? static_cast<char>(digit - 'a' + 'A') : digit;
    const auto place = Digits.find(upper);
    if (place == std::string_view::npos)
        return std::nullopt;
    return static_cast<unsigned>(place);
}

}  // namespace

std::string ByteText(std::uint8_t value) {
    return {Digits[value >> 4], Digits[value & 0x0F]};
}

std::string WordText(std::uint16_t value) {
    return ByteText(static_cast<std::uint8_t>(value >> 8)) +
           ByteText(static_cast<std::uint8_t>(value & 0xFF));
}

std::string BytesText(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const auto byte : bytes) {
        if (!text.empty())
            text += ' ';
        text += ByteText(byte);
    }
    return text;
}

std::optional<std::uint8_t> ByteFromText(std::string_view twoDigits) {
    if (twoDigits.size() != 2)
        return std::nullopt;
    const auto high = DigitValue(twoDigits[0]);
    const auto low = DigitValue(twoDigits[1]);
    if (!high || !low)
        return std::nullopt;
    return static_cast<std::uint8_t>(*high * 16 + *low);
}

}  // namespace Tamber::Simulator
