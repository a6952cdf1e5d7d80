#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "files/HexFinding.hpp"

namespace Tamber {

/// Why the loader refuses a file.
struct HexRefusal {
    HexFault Fault;
    HexFinding Finding;  ///< on the line where it does so
};

/// All there is to say about a HEX file, for one device.
struct HexInspection {
    std::optional<HexRefusal> Refusal;
    MemoryImage Image;  ///< blank, with what the data records say that can be read
    int Lines = 0;      ///< up to the end record and with it
    int DataRecords = 0;
    int LinesAfterEnd = 0;
    bool WordAddressed = false;  ///< INHX16: addresses count words, bytes are swapped
    HexFindings Findings;
    std::vector<HexUse> Uses;  ///< in the order of HexPlace, used places only
    bool OutsideBlank = true;  ///< whatever lies outside the device is blank and does not matter

    /// What the file holds in `place`; null when nothing.
    const HexUse* Use(HexPlace place) const;
};

/// Looks through the text of a HEX file to its end record, line by line as the loader does. Lines
/// the loader would refuse are reported and passed over; of a file without a refusal, Image is what
/// the loader makes of it.
HexInspection InspectHexText(std::string_view text, const DeviceRecord& device);

/// The image of a blank device.
MemoryImage BlankImage(const DeviceRecord& device);

}  // namespace Tamber
