#pragma once

#include <cstdint>
#include <optional>

#include "files/HexInspect.hpp"

namespace Tamber {

/// What has been moved out of the places of assemblers.
struct HexMove {
    std::optional<std::uint16_t> ConfigurationWord = {};  ///< as it is in the image now
    int IdLocations = 0;                                  ///< how many, 0..4

    bool Any() const { return ConfigurationWord || IdLocations > 0; }
};

/// Copies the configuration word and the ID locations of a file into `image`, from where assemblers
/// put them to where the image keeps them. A word that the file also holds in the image's place is
/// left alone; and so is all of it when the facts do not say where assemblers put it.
HexMove MoveToImagePlaces(const HexInspection& inspection, const DeviceRecord& device,
                          const DeviceFact& fact, MemoryImage& image);

}  // namespace Tamber
