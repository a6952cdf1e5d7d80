#include "DumpYardstick.hpp"

namespace Tamber::Bench {
namespace {

char* PutHex(char* place, unsigned value) {
    for (int shift = 12; shift >= 0; shift -= 4)
        *place++ = "0123456789ABCDEF"[value >> shift & 0xF];
    return place;
}

char* PutRow(char* place, const std::uint8_t* bytes, unsigned address) {
    place = PutHex(place, address);
    *place++ = '=';
    for (int word = 0; word < 8; ++word) {
        place = PutHex(place, static_cast<unsigned>(bytes[2 * word + 1] << 8 | bytes[2 * word]));
        *place++ = ' ';
    }
    for (int word = 0; word < 8; ++word) {
        const std::uint8_t byte = bytes[2 * word];
        *place++ = byte < 32 || byte >= 128 ? '.' : static_cast<char>(byte);
    }
    *place++ = '\r';
    *place++ = '\n';
    return place;
}

}  // namespace

std::string DumpRows(const std::uint8_t* memory, unsigned topRow) {
    char text[16 * 64];
    char* place = text;
    for (unsigned row = topRow; row < topRow + 16; ++row)
        place = PutRow(place, memory + 16 * row, 8 * row);
    return {text, place};
}

std::uint16_t SumOf(const std::uint8_t* memory, unsigned count) {
    unsigned sum = 0;
    for (unsigned index = 0; index < count; ++index)
        sum += memory[index];
    return static_cast<std::uint16_t>(sum);
}

}  // namespace Tamber::Bench
