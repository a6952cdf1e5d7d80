#pragma once

#include <nlohmann/json_fwd.hpp>

#include "files/HexInspect.hpp"

namespace Tamber::Cli {

/// What an inspection has found, for --json.
nlohmann::ordered_json InspectionFacts(const HexInspection& inspection, const DeviceRecord& device,
                                       const DeviceFact& fact);

}  // namespace Tamber::Cli
