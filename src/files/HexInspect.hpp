#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/DeviceCatalogue.hpp"
#include "core/MemoryImage.hpp"
#include "files/HexFile.hpp"
#include "files/HexLineCheck.hpp"

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
};

/// Bytes that a record stores where an earlier one has stored already. The later record counts.
struct HexOverlap {
    int Line = 0;
    int EarlierLine = 0;
    HexRange Range;
    bool SameBytes = false;  ///< nothing changes by it
};

/// A record that the loader checks and passes over: extended and start addresses, types 2 to 5.
struct HexIgnored {
    int Line = 0;
    int Type = 0;
    std::uint32_t Value = 0;       ///< its data as one number, high byte first
    bool ShiftsAddresses = false;  ///< by the format, the records behind it belong elsewhere
};

/// All there is to say about a HEX file, for one device.
struct HexInspection {
    std::optional<HexFailure> Refusal;  ///< why the loader refuses the file
    MemoryImage Image;                  ///< blank, with what the readable data records say
    int Lines = 0;                      ///< up to the end record and with it
    int DataRecords = 0;
    int LinesBehindEnd = 0;            ///< that nobody reads
    bool WordAddressed = false;        ///< INHX16: addresses count words, bytes are swapped
    std::vector<HexFinding> Findings;  ///< malformed lines, the first FindingsMax of them
    int FindingsTotal = 0;
    std::vector<HexUse> Uses;  ///< in the order of HexPlace, used places only
    bool OutsideBlank = true;  ///< whatever lies outside the device is blank and does not matter
    std::vector<HexOverlap> Overlaps;
    std::vector<HexIgnored> Ignored;

    static constexpr int FindingsMax = 100;

    /// What the file holds in `place`; null when nothing.
    const HexUse* Use(HexPlace place) const;
};

/// Looks through the text of a HEX file to its end record. Lines the loader would refuse are
/// reported and passed over.
HexInspection InspectHexText(std::string_view text, const DeviceRecord& device);

/// Where the assemblers for 12-bit devices put the configuration word, a byte address.
constexpr int AssemblerConfigurationAddress = 0x1FFE;

/// And the first ID location: just above program memory.
int AssemblerIdAddress(const DeviceRecord& device);

}  // namespace Tamber
