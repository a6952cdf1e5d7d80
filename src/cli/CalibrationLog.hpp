#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <tl/expected.hpp>

namespace Tamber::Cli {

/// What a device had from its factory.
struct CalibrationEntry {
    std::string Device;
    std::string Board;                       ///< name and version
    std::optional<std::uint16_t> Word = {};  ///< the calibration word; none: it had none
    std::uint16_t KeptBits = 0;              ///< of the configuration word
};

/// Adds a line with the time and the entry to a log, which need not exist, and forces it to the
/// disk. The failure is the system's reason; the log is then as it was.
[[nodiscard]] tl::expected<void, std::string> AppendToLog(const std::filesystem::path& log,
                                                          const CalibrationEntry& entry);

/// The calibration word that the log had last for a device of that name.
std::optional<std::uint16_t> LastLoggedWord(const std::filesystem::path& log,
                                            const std::string& device);

}  // namespace Tamber::Cli
