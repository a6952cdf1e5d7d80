#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "files/HexInspect.hpp"

namespace Tamber::Cli {

/// An inspection in words, a line an entry.
std::vector<std::string> InspectionLines(const HexInspection& inspection,
                                         const DeviceRecord& device);

/// The same facts for --json.
nlohmann::ordered_json InspectionFacts(const HexInspection& inspection, const DeviceRecord& device);

}  // namespace Tamber::Cli
