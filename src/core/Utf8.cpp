#include "core/Utf8.hpp"

#include <cstdint>
#include <string_view>
#include <utility>

namespace Tamber {
namespace {

// How many bytes the character at the front of `text` has; 0 when it is no UTF-8. Overlong forms,
// surrogates and codes above U+10FFFF count as none (RFC 3629).
std::size_t CharacterLength(std::string_view text) {
    const auto byte = [&](std::size_t index) {
        return index < text.size() ? static_cast<std::uint8_t>(text[index]) : 0;
    };
    const auto follows = [&](std::size_t index) { return (byte(index) & 0xC0) == 0x80; };
    const int first = byte(0);
    const int second = byte(1);
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first <= 0xDF)
        return follows(1) ? 2 : 0;
    if (first >= 0xE0 && first <= 0xEF) {
        const bool inRange = (first != 0xE0 || second >= 0xA0) && (first != 0xED || second < 0xA0);
        return inRange && follows(1) && follows(2) ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const bool inRange = (first != 0xF0 || second >= 0x90) && (first != 0xF4 || second < 0x90);
        return inRange && follows(1) && follows(2) && follows(3) ? 4 : 0;
    }
    return 0;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

constexpr char Replacement[] = "\xEF\xBF\xBD";  // U+FFFD

bool IsAnyOf(std::string_view character, std::string_view first, std::string_view last) {
    return character.size() == first.size() && character >= first && character <= last;
}

// What stands for a character that is not shown as it is; empty for every other one.
std::string SignFor(std::string_view character) {
    const auto code = static_cast<std::uint8_t>(character.front());
    if (code < 0x20)
        return {'\xE2', '\x90', static_cast<char>(0x80 + code)};  // its control picture
    if (code == 0x7F)
        return "\xE2\x90\xA1";
    if (IsAnyOf(character, "\xC2\x80", "\xC2\x9F") ||          // C1
        character == "\xD8\x9C" ||                             // U+061C
        IsAnyOf(character, "\xE2\x80\x8E", "\xE2\x80\x8F") ||  // U+200E, U+200F
        IsAnyOf(character, "\xE2\x80\xA8", "\xE2\x80\xAE") ||  // U+2028 to U+202E
        IsAnyOf(character, "\xE2\x81\xA6", "\xE2\x81\xA9") ||  // U+2066 to U+2069
        character == "\xEF\xBB\xBF")                           // U+FEFF
        return Replacement;
    return {};
}

}  // namespace

std::string VisibleText(std::string bytes) {
    const std::string text = Utf8From(std::move(bytes));
    std::string shown;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view character = rest.substr(0, CharacterLength(rest));
        const std::string sign = SignFor(character);
        shown += sign.empty() ? character : sign;
        rest.remove_prefix(character.size());
    }
    return shown;
}

std::string Utf8From(std::string bytes) {
    if (IsUtf8(bytes))
        return bytes;
    std::string text;
    for (const char character : bytes)
        AppendLatin1(text, static_cast<std::uint8_t>(character));
    return text;
}

void AppendLatin1(std::string& text, std::uint8_t code) {
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    text += static_cast<char>(0xC0 | code >> 6);
    text += static_cast<char>(0x80 | (code & 0x3F));
}

}  // namespace Tamber
