#pragma once

#include <string>
#include <vector>

#include "cli/Context.hpp"
#include "files/DeviceCheck.hpp"

namespace Tamber::Cli {

using DeviceFindings = std::vector<DeviceFinding>;

/// What a file shows against the selected device, also for --json. What the run does not come to
/// is left out: regions that take no part, and words that are moved to their places.
DeviceFindings FindingsOf(Context& context, const HexInspection& inspection);

/// A finding as one line: severity, cause, remedy.
std::string FindingLine(const DeviceFinding& finding, const DeviceRecord& device);

}  // namespace Tamber::Cli
