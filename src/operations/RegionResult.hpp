#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/AutoSequence.hpp"

namespace Tamber {

/// The parts of a device that functions work on, one message line each. A device whose program
/// memory comes as one stream has its configuration word and ID locations at the stream's ends.
enum class Region {
    ProgramMemory,
    Eeprom,
    IdLocations,
    ConfigurationWord,
    IdAndConfiguration,
    StreamConfigurationWord,
    StreamIdLocations,
};

enum class RegionOutcome {
    Good,
    Failed,       ///< a failure in the data, or a block that the board refused
    DeviceFault,  ///< a reply did not come
    Interrupted,
};

/// Where a region failed first, and what was found there.
struct RegionFinding {
    /// Program memory: the word address when a block was refused or a word is not blank, the byte
    /// address when a byte differs. EEPROM: likewise, from its beginning. Configuration: the word's
    /// offset. Stream: the byte address in the stream.
    int Address = 0;
    std::optional<std::uint16_t> Expected;  ///< the byte or word that should be there
    std::optional<std::uint16_t> Found;     ///< the one that is
};

/// What came of one region of a device function.
struct RegionResult {
    FunctionCode Function = FunctionRead;
    Region Where = Region::ProgramMemory;
    RegionOutcome Outcome = RegionOutcome::Good;
    RegionFinding Finding;  ///< of a region that Failed
};

/// What a message line reads while a region is under way ("Reading EEPROM...").
std::string HeadingText(FunctionCode function, Region region);

/// What it reads once the region has failed ("Verify Error at 0010").
std::string FailureText(const RegionResult& result);

/// What is added to a line that is under way.
constexpr char OkText[] = "   OK!";
constexpr char DeviceFaultText[] = "   Device Fault!";
constexpr char InterruptedText[] = "   Interrupted!";

}  // namespace Tamber
