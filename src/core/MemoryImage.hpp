#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace Tamber {

/// The host's copy of a device's memories, laid out like the address space of an Intel HEX file for
/// these devices: byte address = 2 x word address, low byte first. Record addresses, the addresses
/// sent to the board and indices into the image are the same number.
class MemoryImage {
  public:
    static constexpr int Size = 70'001;

    static constexpr int ProgramWordsMax = 8'192;
    static constexpr int IdLocations = 0x4000;        ///< four words
    static constexpr int ConfigurationWord = 0x400E;  ///< low byte; the high byte follows
    static constexpr int Eeprom = 0x4200;             ///< EEPROM byte n is at 0x4200 + 2n
    static constexpr int EepromBytesMax = 256;
    static constexpr int BlockBytes = 16;  ///< eight words, what one frame carries

    /// The byte at `index`, 0..70,000. Any other index is a fault of the program and ends it, here
    /// and below.
    std::uint8_t Byte(int index) const { return bytes_[Checked(index, 1)]; }
    void SetByte(int index, std::uint8_t value) { bytes_[Checked(index, 1)] = value; }

    /// The word whose low byte is at `index`.
    std::uint16_t Word(int index) const {
        return static_cast<std::uint16_t>(Byte(index + 1) << 8 | Byte(index));
    }
    void SetWord(int index, std::uint16_t word) {
        SetByte(index, static_cast<std::uint8_t>(word & 0xFF));
        SetByte(index + 1, static_cast<std::uint8_t>(word >> 8));
    }

    /// `count` bytes from `index` on.
    std::span<const std::uint8_t> Bytes(int index, int count) const {
        return std::span(bytes_).subspan(Checked(index, count), static_cast<std::size_t>(count));
    }

    /// The 16 bytes of the block that begins at `index`.
    std::span<const std::uint8_t, BlockBytes> Block(int index) const {
        return std::span(bytes_).subspan(Checked(index, BlockBytes)).first<BlockBytes>();
    }

    /// Stores `values` from `index` on.
    void Store(int index, std::span<const std::uint8_t> values);

    /// Program memory, all 8,192 words, to the blank word of the type.
    void ClearProgramMemory(std::int16_t typeCode);

    /// EEPROM, data bytes and companions, to 0xFF.
    void ClearEeprom();

    /// ID locations and the three words after them to 0xFF, the configuration word to 0x3FFF.
    void ClearConfiguration();

    bool operator==(const MemoryImage&) const = default;

  private:
    static std::size_t Checked(int index, int count);

    std::array<std::uint8_t, Size> bytes_{};
};

}  // namespace Tamber
