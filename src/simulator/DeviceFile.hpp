#pragma once

#include <string>
#include <string_view>

#include "simulator/DeviceMemory.hpp"
#include "simulator/LineFailure.hpp"

namespace Tamber::Simulator {

/// Puts the data of an Intel HEX file's text into the device; the device changes only when the
/// whole text was good. Bytes for which it has no memory are passed over. Extended address records
/// are accepted as long as their address is 0.
[[nodiscard]] tl::expected<void, LineFailure> LoadDevice(std::string_view text,
                                                         DeviceMemory& memory);

/// All memories of the device as the text of an Intel HEX file.
std::string DeviceText(const DeviceMemory& memory);

}  // namespace Tamber::Simulator
