#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/HexFinding.hpp"

namespace Tamber {

/// Why the loader refuses a file.
struct HexRefusal {
    HexFault Fault;
    HexFinding Finding;  ///< on the line where it does so
};

/// Where in the file a byte of the image is from; where several records store it, from the last.
struct HexOrigin {
    std::int32_t Line = 0;     ///< 0: the file does not store it
    std::uint8_t Column = 0;   ///< of its first digit
    bool Moved = false;        ///< an extended address wants it elsewhere
    bool Conflicting = false;  ///< records disagree about it

    bool Meant() const { return Line != 0 && !Moved; }
};

/// Data behind an extended address other than 0. The loader stores them at their own addresses.
struct HexMovedData {
    int Line = 0;               ///< the extended address
    std::int64_t Address = -1;  ///< the byte address to which the first of them are moved
    int Words = 0;
};

/// A comment after the end record.
struct HexComment {
    int Line = 0;
    std::string Text;  ///< after the semicolon, without blanks around it
};

/// All there is to say about a HEX file, for one device.
struct HexInspection {
    std::optional<HexRefusal> Refusal;
    MemoryImage Image;  ///< blank, with what the data records say that can be read
    int Lines = 0;      ///< up to the end record and with it
    int DataRecords = 0;
    int LinesAfterEnd = 0;       ///< at most one more than LinesAfterEndMax
    bool WordAddressed = false;  ///< INHX16: addresses count words, bytes are swapped
    HexFindings Findings;
    std::vector<HexOrigin> Origins;  ///< by image index
    std::optional<HexMovedData> Moved;
    int ConflictEarlierLine = 0;       ///< the first that another disagrees with
    std::vector<HexComment> Comments;  ///< short ones, and of many the first
    std::vector<HexUse> Uses;          ///< in the order of HexPlace, used places only
    bool OutsideBlank = true;  ///< whatever lies outside the device is blank and does not matter

    /// What the file holds in `place`; null when nothing.
    const HexUse* Use(HexPlace place) const;

    /// The file stores a byte of the word at this even byte address, and means it to be there.
    bool Holds(int address) const;

    /// That word; a byte that the file does not store is 0xFF or, as a high byte, `high`.
    std::uint16_t Word(int address, std::uint8_t high = 0xFF) const;
};

/// Looks through the text of a HEX file to its end record, line by line as the loader does, and to
/// the line that is one too many where there is none. Lines the loader would refuse are reported
/// and passed over; of a file without a refusal, Image is what the loader makes of it.
HexInspection InspectHexText(std::string_view text, const DeviceRecord& device,
                             const DeviceFact& fact = {});

/// The image of a blank device.
MemoryImage BlankImage(const DeviceRecord& device);

}  // namespace Tamber
