#pragma once

#include <optional>
#include <string>

#include "cli/Arguments.hpp"

namespace Tamber::Cli {

/// Ticks the regions that `list` names, with commas between them. Returns what is wrong with it,
/// empty when nothing is; so does the next one.
std::string TakeRegions(const std::string& list, Regions& regions);

/// Takes "N=PATH" apart.
std::string TakeSetting(const std::string& text, std::optional<PortSetting>& setting);

}  // namespace Tamber::Cli
