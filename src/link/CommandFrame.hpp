#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace Tamber {

/// The command letters of the board that stand for themselves; the device type is named by a
/// lower-case letter, see TypeLetter.
enum CommandLetter : std::uint8_t {
    CommandIdentify = 'T',
    CommandRead = 'R',
    CommandWrite = 'W',
    CommandEnd = 'I',
    CommandEraseProgram = 'E',
    CommandEraseEeprom = 'F',
    CommandEraseIdLocations = 'G',
    CommandEraseConfiguration = 'H',
};

/// The letter of a device type: "a" for type 1, "b" for type 2, and so on.
constexpr std::uint8_t TypeLetter(std::int16_t typeCode) {
    return static_cast<std::uint8_t>('a' + typeCode - 1);
}

/// Eight words, what one frame carries.
constexpr int BlockLength = 16;  // bytes

constexpr std::uint8_t AddrHi(int address) {
    return static_cast<std::uint8_t>(address / 256);
}
constexpr std::uint8_t AddrLo(int address) {
    return static_cast<std::uint8_t>(address % 256);
}

/// A frame is a count byte and that many bytes after it. Addresses are byte addresses,
/// 0..0xFFFF, twice the word address.
constexpr std::array<std::uint8_t, 2> CommandFrame(std::uint8_t letter) {
    return {0x01, letter};
}

constexpr std::array<std::uint8_t, 5> ReadAddressFrame(int address) {
    return {0x04, AddrHi(address), AddrLo(address), 0x00, 0x01};
}

constexpr std::array<std::uint8_t, 21> WriteDataFrame(
    int address, std::uint8_t count, std::span<const std::uint8_t, BlockLength> data) {
    std::array<std::uint8_t, 21> frame{0x14, AddrHi(address), AddrLo(address), 0x00, count};
    for (std::size_t index = 0; index < data.size(); ++index)
        frame[5 + index] = data[index];
    return frame;
}

constexpr std::int16_t IdentificationLength = 10;
constexpr std::int16_t ReadReplyLength = 17;
constexpr std::int16_t WriteReplyLength = 3;

}  // namespace Tamber
