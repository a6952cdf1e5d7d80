#pragma once

#include <vector>

#include "core/DeviceCatalogue.hpp"
#include "core/MemoryImage.hpp"

namespace Tamber {

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

/// Where the assemblers for 12-bit devices put the configuration word, a byte address.
constexpr int AssemblerConfigurationAddress = 0x1FFE;

/// And the first ID location: just above program memory.
int AssemblerIdAddress(const DeviceRecord& device);

/// Where a byte address lies in the device.
HexPlace PlaceOf(int address, const DeviceRecord& device);

}  // namespace Tamber
