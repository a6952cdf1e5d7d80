#pragma once

#include <filesystem>
#include <string>
#include <tl/expected.hpp>

#include "core/MemoryImage.hpp"

namespace Tamber {

/// The image as the text of an Intel HEX file: records of 16 bytes for `programWords` words of
/// program memory, one for the ID locations and the configuration word, 32 for the EEPROM, blank or
/// not, then the end record. Every line ends in CR LF. Words beyond the program memory's 8,192 are
/// not written, so that no address comes twice; a negative number counts as 0.
std::string HexFileText(const MemoryImage& image, int programWords);

/// Replaces `file` by that text, or leaves it exactly as it was; the failure is the system's
/// reason.
[[nodiscard]] tl::expected<void, std::string> SaveHexFile(const std::filesystem::path& file,
                                                          const MemoryImage& image,
                                                          int programWords);

}  // namespace Tamber
