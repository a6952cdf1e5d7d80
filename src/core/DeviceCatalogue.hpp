#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <tl/expected.hpp>

#include "core/FileFailure.hpp"

namespace Tamber {

/// One device type as the device list describes it.
struct DeviceRecord {
    std::string Name;                 ///< as the user sees it, in UTF-8
    std::int16_t TypeCode = 0;        ///< programming algorithm, from 1; 1..5 have 12-bit words
    std::int32_t ProgramWords = 0;    ///< size of program memory in program words
    std::int16_t EepromBytes = 0;     ///< size of data EEPROM in bytes; 0 when there is none
    std::int16_t EraseSupported = 0;  ///< 0 when the board cannot erase the device

    bool operator==(const DeviceRecord&) const = default;
};

/// The device whose program memory comes as one stream that begins with the configuration word.
constexpr std::int16_t StreamTypeCode = 1;

/// The program words of a type have 12 bits (TypeCode below 6), or else 14.
constexpr bool HasTwelveBitWords(std::int16_t typeCode) {
    return typeCode < 6;
}

/// The high byte of an erased program word, 0x0F or 0x3F. The low byte is 0xFF for both.
constexpr std::uint8_t BlankWordHigh(std::int16_t typeCode) {
    return HasTwelveBitWords(typeCode) ? 0x0F : 0x3F;
}

/// The device types, filled once at start-up and only read afterwards.
class DeviceCatalogue {
  public:
    static constexpr int LastSlot = 50;

    /// True when `index` names a slot, 0..50.
    static constexpr bool HoldsSlot(int index) { return index >= 0 && index <= LastSlot; }

    /// The record in slot `index`; slots that were never filled are empty. An index outside 0..50
    /// is a fault of the program and ends it.
    const DeviceRecord& Record(int index) const;

    /// Fills slots 1..`deviceCount` from a device list file: five fields a record, Name, TypeCode,
    /// ProgramWords, EepromBytes, EraseSupported. What follows the last record asked for is not
    /// read.
    [[nodiscard]] static tl::expected<DeviceCatalogue, FileFailure> Load(
        const std::filesystem::path& file, std::int16_t deviceCount);

  private:
    std::array<DeviceRecord, LastSlot + 1> records_;
};

}  // namespace Tamber
