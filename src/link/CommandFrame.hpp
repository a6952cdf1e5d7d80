#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace Tamber {

/// The command letters of the board that stand for themselves; the device type is told with a
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

/// The letter that tells the board the device type: "a" for type 1, "b" for type 2, and so on.
constexpr std::uint8_t TypeLetter(std::int16_t typeCode) {
    return static_cast<std::uint8_t>('a' + typeCode - 1);
}

/// The two address bytes of a request, from the byte address in the layout of the memory image.
struct BlockAddress {
    std::uint8_t AddrHi = 0;
    std::uint8_t AddrLo = 0;
};

/// Block `block` (8 words each, from 0) of program memory.
constexpr BlockAddress ProgramBlock(int block) {
    return {static_cast<std::uint8_t>(16 * block / 256),
            static_cast<std::uint8_t>(16 * block % 256)};
}

/// Block `block` (8 EEPROM bytes each, from 0) of data EEPROM.
constexpr BlockAddress EepromBlock(int block) {
    return {static_cast<std::uint8_t>(16 * block / 256 + 0x42),
            static_cast<std::uint8_t>(16 * block % 256)};
}

/// The one block with the ID locations and the configuration word.
constexpr BlockAddress ConfigurationBlock{0x40, 0x00};

/// A frame is a count byte and that many bytes behind it.
constexpr std::array<std::uint8_t, 2> CommandFrame(std::uint8_t letter) {
    return {0x01, letter};
}

constexpr std::array<std::uint8_t, 5> ReadAddressFrame(BlockAddress address) {
    return {0x04, address.AddrHi, address.AddrLo, 0x00, 0x01};
}

constexpr std::array<std::uint8_t, 21> WriteDataFrame(BlockAddress address, std::uint8_t count,
                                                      std::span<const std::uint8_t, 16> data) {
    std::array<std::uint8_t, 21> frame{0x14, address.AddrHi, address.AddrLo, 0x00, count};
    for (std::size_t index = 0; index < data.size(); ++index)
        frame[5 + index] = data[index];
    return frame;
}

constexpr std::int16_t IdentificationLength = 10;
constexpr std::int16_t ReadReplyLength = 17;
constexpr std::int16_t WriteReplyLength = 3;

}  // namespace Tamber
