#include "core/HexText.hpp"

namespace Tamber {
namespace {

constexpr char Digits[] = "0123456789ABCDEF";

void AppendDigits(std::string& text, std::uint32_t value, int fewest) {
    char reversed[8];
    int count = 0;
    while (value != 0 || count < fewest) {
        reversed[count++] = Digits[value & 0xF];
        value >>= 4;
    }
    while (count > 0)
        text.push_back(reversed[--count]);
}

}  // namespace

void AppendHexByte(std::string& text, std::uint8_t value) {
    const char digits[2] = {Digits[value >> 4], Digits[value & 0xF]};
    text.append(digits, 2);
}

void AppendHexWord(std::string& text, std::uint32_t value) {
    AppendDigits(text, value, 4);
}

std::string HexByte(std::uint8_t value) {
    std::string text;
    AppendHexByte(text, value);
    return text;
}

std::string HexWord(std::uint32_t value) {
    std::string text;
    AppendHexWord(text, value);
    return text;
}

std::string HexNumber(std::uint32_t value) {
    std::string text;
    AppendDigits(text, value, 1);
    return text;
}

}  // namespace Tamber
