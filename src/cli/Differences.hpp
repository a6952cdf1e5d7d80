#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/BoardSession.hpp"
#include "core/DeviceCatalogue.hpp"
#include "core/MemoryImage.hpp"

namespace Tamber::Cli {

struct Difference {
    int Address = 0;  ///< word address in the region, or number of the EEPROM byte
    std::uint16_t Expected = 0;
    std::uint16_t Found = 0;
};

/// The differences of one memory region.
struct RegionDifferences {
    std::string Region;
    int Words = 0;  ///< compared in all
    std::vector<Difference> List;
    std::string LikelyCause;  ///< empty when none can be seen
};

/// Compares what a device holds with what it should, in the ticked regions; regions without a
/// difference are left out. Only the data bytes of EEPROM words count, every bit of all others.
std::vector<RegionDifferences> FindDifferences(const MemoryImage& expected,
                                               const MemoryImage& found, const DeviceRecord& device,
                                               const Regions& regions);

/// Reads the device of `session` once more and reports all differences from the image, by region.
/// `verified` is what came of the verify before; the result is what came of both.
[[nodiscard]] Outcome ReportDifferences(Context& context, BoardSession& session, Regions regions,
                                        Outcome verified);

}  // namespace Tamber::Cli
