#pragma once

#include <vector>

#include "core/DeviceCatalogue.hpp"
#include "core/DeviceFacts.hpp"
#include "core/MemoryImage.hpp"

namespace Tamber {

constexpr int IdBytes = 8;  ///< of the four ID locations

/// Where files for larger devices have a second configuration word, a byte address.
constexpr int SecondConfigurationAddress = 0x4010;

/// Where the bytes of a HEX file lie, for one device. Assemblers for devices with 12-bit words put
/// the ID locations just above program memory and the configuration word at 1FFE; the image keeps
/// both elsewhere.
enum class HexPlace {
    ProgramMemory,
    IdLocations,
    ConfigurationWord,
    BetweenIdAndConfiguration,
    Eeprom,
    AssemblerIdLocations,
    AssemblerConfigurationWord,
    Outside,
};

/// Byte addresses, both inclusive.
struct HexRange {
    int First = 0;
    int Last = 0;

    bool operator==(const HexRange&) const = default;
};

/// What a file holds in one place.
struct HexUse {
    HexPlace Place = HexPlace::Outside;
    int Words = 0;                 ///< words of which at least one byte is in the file
    std::vector<HexRange> Ranges;  ///< in ascending order, with gaps between them

    /// Adds a byte; addresses come in ascending order.
    void Add(int address);
};

/// Where the files of assemblers have the configuration word and the first ID location, byte
/// addresses. Where nothing is known of the device, the usual ones: for 12-bit words 1FFE and just
/// above program memory, else the image's own.
int AssemblerConfigurationAddress(const DeviceRecord& device, const DeviceFact& fact);
int AssemblerIdAddress(const DeviceRecord& device, const DeviceFact& fact);

/// Where a byte address lies in the device.
HexPlace PlaceOf(int address, const DeviceRecord& device, const DeviceFact& fact);

}  // namespace Tamber
