#pragma once

#include "cli/BoardSession.hpp"

namespace Tamber::Cli {

/// Reads the device of `session` once more and tells all differences from the image, by region.
/// `verified` is what the verify before came to; the result is what the whole came to.
[[nodiscard]] Outcome TellDifferences(Context& context, BoardSession& session, Regions regions,
                                      Outcome verified);

}  // namespace Tamber::Cli
