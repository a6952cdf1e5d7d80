#include "HexYardstick.hpp"

#include <algorithm>

namespace Tamber::Bench {
namespace {

constexpr char Digits[] = "0123456789ABCDEF";
constexpr unsigned NoDigit = 0x100;

constexpr std::array<std::uint16_t, 256> MakeValues() {
    std::array<std::uint16_t, 256> values{};
    values.fill(NoDigit);
    for (unsigned digit = 0; digit < 16; ++digit) {
        values[static_cast<unsigned char>(Digits[digit])] = static_cast<std::uint16_t>(digit);
        values[static_cast<unsigned char>("0123456789abcdef"[digit])] =
            static_cast<std::uint16_t>(digit);
    }
    return values;
}

constexpr auto Values = MakeValues();

// The byte that two digits stand for; NoDigit or more when one of them is none.
unsigned Pair(const char* digits) {
    const unsigned high = Values[static_cast<unsigned char>(digits[0])];
    const unsigned low = Values[static_cast<unsigned char>(digits[1])];
    return high << 4 | low;
}

char* PutByte(char* place, unsigned value, unsigned& sum) {
    sum += value;
    *place++ = Digits[value >> 4 & 0xF];
    *place++ = Digits[value & 0xF];
    return place;
}

}  // namespace

bool ReadHex(std::string_view text, Memory& memory) {
    const char* next = text.data();
    const char* const end = next + text.size();
    while (end - next >= 11) {
        if (*next != ':')
            return false;
        const unsigned count = Pair(next + 1);
        const unsigned high = Pair(next + 3);
        const unsigned low = Pair(next + 5);
        const unsigned type = Pair(next + 7);
        if ((count | high | low | type) >= NoDigit || end - next < 11 + 2 * int(count))
            return false;
        if (type == 1)
            return true;
        unsigned sum = count + high + low + type;
        std::uint8_t* place = memory.data() + (high << 8 | low);
        next += 9;
        for (const char* const last = next + 2 * count; next < last; next += 2) {
            const unsigned value = Pair(next);
            if (value >= NoDigit)
                return false;
            sum += value;
            if (type == 0)
                *place++ = static_cast<std::uint8_t>(value);
        }
        if (((sum + Pair(next)) & 0xFF) != 0)
            return false;
        for (next += 2; next < end && (*next == '\r' || *next == '\n');)
            ++next;
    }
    return false;
}

void AppendHex(std::string& text, const std::uint8_t* memory, unsigned from, unsigned length) {
    for (const unsigned end = from + length; from < end; from += 16) {
        char line[48];
        unsigned sum = 0;
        const unsigned count = std::min(16U, end - from);
        char* place = line;
        *place++ = ':';
        for (const unsigned value : {count, from >> 8, from & 0xFF, 0U})
            place = PutByte(place, value, sum);
        for (unsigned index = 0; index < count; ++index)
            place = PutByte(place, memory[from + index], sum);
        place = PutByte(place, -sum & 0xFF, sum);
        *place++ = '\r';
        *place++ = '\n';
        text.append(line, place);
    }
}

}  // namespace Tamber::Bench
