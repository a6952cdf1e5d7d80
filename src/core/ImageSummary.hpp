#pragma once

#include <cstdint>
#include <string>

#include "core/MemoryImage.hpp"

namespace Tamber {

/// The first `programWords` bytes of the image summed modulo 65,536. The sum takes as many bytes as
/// the device has words, so it covers the first half of program memory.
std::uint32_t ProgramChecksum(const MemoryImage& image, int programWords);

/// The low bytes of the four ID locations, eight hexadecimal digits, the first location first.
std::string IdLocationsText(const MemoryImage& image);

/// The configuration word, four hexadecimal digits.
std::string ConfigurationWordText(const MemoryImage& image);

}  // namespace Tamber
