#pragma once

#include <istream>
#include <optional>
#include <ostream>
#include <string>

#include "simulator/DeviceMemory.hpp"

namespace Tamber::Simulator {

/// Why a HEX file cannot be taken.
struct HexFault {
    /// The offending line, from 1; the one after the last when the file ends too soon.
    int line = 0;
    std::string cause;
};

/// Puts the data of an Intel HEX file into the device; addresses are byte addresses. The file is
/// checked first, up to its end record: when there is a fault the device keeps what it holds. Bytes
/// for which the device has no memory are passed over. Extended address records are taken as long
/// as their address is 0. Either line end will do.
[[nodiscard]] std::optional<HexFault> LoadHex(std::istream& file, DeviceMemory& memory);

/// Writes all memories of the device as Intel HEX: program memory, the block of the ID locations
/// and the configuration word, EEPROM; records of up to 16 bytes, lines ended by a line feed. The
/// caller looks at the stream's state for failures.
void SaveHex(std::ostream& file, const DeviceMemory& memory);

}  // namespace Tamber::Simulator
