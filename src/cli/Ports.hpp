#pragma once

#include <filesystem>

#include "cli/Outcome.hpp"

namespace Tamber::Cli {

/// Makes COM`commPort` of the working folder stand for `port`, by a link there. A link that was
/// there is replaced, anything else left alone.
[[nodiscard]] Outcome MakePortLink(const std::filesystem::path& folder, int commPort,
                                   const std::filesystem::path& port);

/// The link of `folder` (/dev/serial/by-id on most systems) that leads to `port`; empty when there
/// is none.
std::filesystem::path StablePathOf(const std::filesystem::path& port,
                                   const std::filesystem::path& folder);

}  // namespace Tamber::Cli
