#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/DeviceCatalogue.hpp"
#include "core/MemoryImage.hpp"
#include "operations/FunctionDisplay.hpp"

namespace Tamber::Cli {

struct Difference {
    int Address = 0;  ///< word address in the region, or number of the EEPROM byte
    std::uint16_t Expected = 0;
    std::uint16_t Found = 0;

    bool operator==(const Difference&) const = default;
};

/// The differences of one memory region.
struct RegionDifferences {
    std::string Region;
    int Words = 0;  ///< compared in all
    std::vector<Difference> List;
    std::string LikelyCause;  ///< empty when none can be seen
};

/// Compares what a device holds with what it should, in the ticked regions; regions without a
/// difference are left out. Of EEPROM words the data bytes count alone, of all others every bit.
std::vector<RegionDifferences> FindDifferences(const MemoryImage& expected,
                                               const MemoryImage& found, const DeviceRecord& device,
                                               const Regions& regions);

}  // namespace Tamber::Cli
