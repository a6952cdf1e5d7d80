#pragma once

#include <filesystem>

namespace Tamber::Cli {

/// The link of `folder` (/dev/serial/by-id on most systems) that leads to `port`; empty when there
/// is none.
std::filesystem::path StablePathOf(const std::filesystem::path& port,
                                   const std::filesystem::path& folder);

}  // namespace Tamber::Cli
