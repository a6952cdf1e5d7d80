#pragma once

#include <istream>
#include <string>
#include <tl/expected.hpp>

#include "cli/Context.hpp"

namespace Tamber::Cli {

/// The text of the HEX file that the arguments name, or of standard input.
[[nodiscard]] tl::expected<std::string, Failure> ReadHexText(Context& context);

/// Loads that file into an image that is blank for the device, and takes configuration word and ID
/// locations there from where assemblers put them. Reports what the file shows against the device,
/// and fails when some of it is harmful, unless the arguments want the file all the same.
[[nodiscard]] Outcome LoadHexInput(Context& context);

}  // namespace Tamber::Cli
