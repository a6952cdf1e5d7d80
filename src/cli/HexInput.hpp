#pragma once

#include <istream>
#include <string>
#include <tl/expected.hpp>

#include "cli/Context.hpp"

namespace Tamber::Cli {

/// The text of the HEX file that the arguments name, or of standard input.
[[nodiscard]] tl::expected<std::string, Outcome> ReadHexText(Context& context);

/// Blanks the image for the device and loads that file into it. What the file holds and the device
/// does not is mentioned.
[[nodiscard]] Outcome LoadHexInput(Context& context);

/// Blanks the image for the device, as the choice of a device does.
void BlankImage(Context& context);

}  // namespace Tamber::Cli
