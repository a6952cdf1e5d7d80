#pragma once

#include <string>
#include <vector>

#include "files/HexInspect.hpp"

namespace Tamber::Cli {

/// What a HEX file holds for the device, in words, a line an entry.
std::vector<std::string> ContentsLines(const HexInspection& inspection, const DeviceRecord& device);

/// The addresses of a range as a reader knows them: words of program memory, numbers of EEPROM
/// bytes, else byte addresses.
std::string RangeText(HexPlace place, const HexRange& range);

/// "1 word", "2 words".
std::string Count(int count, const char* one);

}  // namespace Tamber::Cli
