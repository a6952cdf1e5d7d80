#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <tl/expected.hpp>
#include <vector>

namespace Tamber::Simulator {

/// What kind of device sits in the socket.
struct DeviceShape {
    int TypeCode = 7;  ///< 1 to 26; types 1 to 5 have 12-bit program words, the others 14-bit
    int ProgramWords = 1024;                  ///< 0 to 8192
    int EepromBytes = 64;                     ///< 0 to 256; 0: the device has none
    std::optional<int> CalibrationWord = {};  ///< the factory's, last in program memory
};

/// The eight words of a block as they travel: each low byte first.
using BlockBytes = std::array<std::uint8_t, 16>;

/// The memories of the device in the socket, by byte address (twice the word address, low byte
/// first): program memory from 0x0000, ID locations 0x4000..0x4007, three words after them,
/// configuration word 0x400E..0x400F, EEPROM from 0x4200 (data byte, companion byte).
///
/// Whole bytes are kept as they were written, with no bits masked off, so that a test can compare
/// them with what was sent. A new device is blank but for its
/// calibration word, which an erase of program memory takes away.
class DeviceMemory {
  public:
    static constexpr std::uint32_t IdAddress = 0x4000;
    static constexpr std::uint32_t ConfigurationAddress = 0x400E;
    static constexpr std::uint32_t EepromAddress = 0x4200;
    static constexpr std::uint32_t EndAddress = 0x4400;  ///< no device has memory from here on

    explicit DeviceMemory(const DeviceShape& shape);

    const DeviceShape& Shape() const { return shape_; }

    /// The byte at any address; where the device has no memory, the value of a blank one.
    std::uint8_t ByteAt(std::uint32_t address) const;

    /// False when the device has no memory at the address; nothing is stored then.
    bool SetByte(std::uint32_t address, std::uint8_t value);

    /// The 16 bytes from `address` on, as ByteAt gives them.
    BlockBytes Block(std::uint32_t address) const;

    /// The 16 bytes from `address` on of the read stream of a type 1 device: configuration word,
    /// program words, the four ID locations, then blank program words without end.
    BlockBytes StreamBlock(std::uint32_t address) const;

    /// Stores the bytes one after the other until one has no memory to go to; the failure is that
    /// one's address.
    [[nodiscard]] tl::expected<void, std::uint32_t> Write(std::uint32_t address,
                                                          std::span<const std::uint8_t> bytes);

    void EraseProgram() { Erase(0, IdAddress); }
    void EraseEeprom() { Erase(EepromAddress, EndAddress); }
    /// The ID locations and the three words after them, so that the four erases together blank
    /// everything.
    void EraseIds() { Erase(IdAddress, ConfigurationAddress); }
    void EraseConfiguration() { Erase(ConfigurationAddress, ConfigurationAddress + 2); }

  private:
    const std::uint8_t* Find(std::uint32_t address) const;
    std::uint8_t BlankByte(std::uint32_t address) const;
    std::uint32_t StreamSource(std::uint32_t address) const;
    void Erase(std::uint32_t from, std::uint32_t to);

    DeviceShape shape_;
    std::vector<std::uint8_t> program_;
    BlockBytes idBlock_{};
    std::vector<std::uint8_t> eeprom_;
};

}  // namespace Tamber::Simulator
