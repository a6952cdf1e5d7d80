#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

#include "core/DeviceCatalogue.hpp"
#include "core/FileFailure.hpp"
#include "core/MemoryImage.hpp"

namespace Tamber {

/// What is known about a device beyond its record in the device list. A value that is not there is
/// not known, and nothing is assumed in its place.
struct DeviceFact {
    std::string Name;  ///< as the device list has it, in UTF-8

    /// The last program word comes from the factory and sets the oscillator.
    std::optional<bool> HasCalibrationWord = {};

    std::optional<std::uint16_t> ConfigurationMask = {};  ///< the bits that the device implements
    std::optional<bool> UnimplementedReads = {};          ///< the other configuration bits, as read
    std::optional<std::uint16_t> IdMask = {};             ///< the bits of an ID location in use

    /// Byte addresses in the files of assemblers: the configuration word, the first ID location.
    std::optional<int> FileConfiguration = {};
    std::optional<int> FileIds = {};

    std::optional<std::uint16_t> KeepMask = {};  ///< configuration bits that the factory sets

    bool operator==(const DeviceFact&) const = default;
};

/// Whether a last program word can be one that the factory wrote: MOVLW k (0C00-0CFF) in 12 bits,
/// RETLW k (3400-34FF) in 14.
constexpr bool IsCalibrationWord(int word, std::int16_t typeCode) {
    return word >> 8 == (HasTwelveBitWords(typeCode) ? 0x0C : 0x34);
}

/// The calibration word that an image has for a device; none when it has none, or nothing says that
/// the device has one.
std::optional<std::uint16_t> CalibrationWordIn(const MemoryImage& image, const DeviceRecord& device,
                                               const DeviceFact& fact);

/// The facts about devices, read once at start-up from a file that need not be there.
class DeviceFacts {
  public:
    /// What is known about the device of that name, letter for letter; an empty fact when nothing.
    const DeviceFact& Of(std::string_view name) const;

    /// Reads a file with a line for each device: the name, then the values in the order of
    /// DeviceFact, hexadecimal, any of them empty or left out at the end. A file that is not there
    /// gives no facts. Fails when the file cannot be read, a value is no number or out of range, a
    /// line has too many of them, or a name is empty or comes twice.
    [[nodiscard]] static tl::expected<DeviceFacts, FileFailure> Load(
        const std::filesystem::path& file);

  private:
    std::vector<DeviceFact> facts_;
};

}  // namespace Tamber
