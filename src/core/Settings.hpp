#pragma once

#include <cstdint>
#include <filesystem>
#include <tl/expected.hpp>

#include "core/FileFailure.hpp"

namespace Tamber {

/// What the settings file keeps from one run to the next.
struct Settings {
    std::int16_t CommPortNumber = 0;  ///< the serial port to open, 1 = COM1
    std::int16_t DeviceCount = 0;     ///< records to read from the device list
    std::int16_t SelectedDevice = 0;  ///< slot of the current device, 0..50
};

/// Reads the three values, in the order of the structure, from a settings file. Fails when the file
/// cannot be read, holds fewer than three numbers of 16 bits, or selects a slot outside 0..50.
[[nodiscard]] tl::expected<Settings, FileFailure> LoadSettings(const std::filesystem::path& file);

/// Replaces the settings file, one value a line, each ended by CR LF. The file that was there stays
/// as it was when that fails.
[[nodiscard]] tl::expected<void, FileFailure> SaveSettings(const std::filesystem::path& file,
                                                           const Settings& settings);

}  // namespace Tamber
