#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/DeviceCheck.hpp"

namespace Tamber {

/// The even byte addresses of all words that the file holds, in ascending order.
std::vector<int> HeldWords(const HexInspection& inspection);

/// Why a word of the file does not fit a device: WideWords or one of the Beyond kinds, or nothing.
/// Blank words fit everywhere.
std::optional<DeviceFindingKind> MisfitOf(const HexInspection& inspection, int address,
                                          const DeviceRecord& device, const DeviceFact& fact);

/// Whether all of these words fit a device.
bool Fits(const HexInspection& inspection, const std::vector<int>& words,
          const DeviceRecord& device, const DeviceFact& fact);

/// The name of the only listed device that they fit; empty when there is none or several.
std::string OnlyFitting(const HexInspection& inspection, const std::vector<int>& words,
                        const DeviceFacts& facts, const DeviceCatalogue& catalogue,
                        int deviceCount);

/// The listed device whose name, in letters of either case, is a comment; null when none is.
const DeviceRecord* DeviceNamedBy(const HexComment& comment, const DeviceCatalogue& catalogue,
                                  int deviceCount);

/// Files are rightly moved between these: they are programmed alike, or their names differ in a
/// trailing letter only.
bool Related(const DeviceRecord& first, const DeviceRecord& second);

}  // namespace Tamber
