#pragma once

#include <istream>
#include <string>
#include <tl/expected.hpp>

#include "cli/Context.hpp"

namespace Tamber::Cli {

/// The text of the HEX file that the arguments name, or of standard input.
[[nodiscard]] tl::expected<std::string, Failure> ReadHexText(Context& context);

/// Loads that file into an image that is blank for the device. Words that the device has no place
/// for are mentioned.
[[nodiscard]] Outcome LoadHexInput(Context& context);

}  // namespace Tamber::Cli
