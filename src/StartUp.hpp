#pragma once

#include <filesystem>
#include <tl/expected.hpp>

#include "core/FileFailure.hpp"
#include "modFunc.hpp"

namespace Tamber {

/// The data files' names in the folder the program was started in.
std::filesystem::path SettingsFile(const modFunc& program);
std::filesystem::path DeviceListFile(const modFunc& program);
std::filesystem::path DeviceFactsFile(const modFunc& program);
std::filesystem::path AutoSequenceFile(const modFunc& program);

/// Fills `program` from the data files of `directory`: settings, then device list, then Auto
/// series, then the facts about devices. Stops at the first failure; nothing is ever written. Facts
/// that cannot be used stop nothing: `factsFailure` says why there are none.
[[nodiscard]] tl::expected<void, FileFailure> StartUp(const std::filesystem::path& directory,
                                                      modFunc& program);

}  // namespace Tamber
