#pragma once

#include "cli/BoardSession.hpp"

namespace Tamber::Cli {

/// Reads the device of `session` once more and reports all differences from the image, by region.
/// Only the data bytes of EEPROM words count, every bit of all others. `verified` is what came of
/// the verify before; the result is what came of both.
[[nodiscard]] Outcome ReportDifferences(Context& context, BoardSession& session, Regions regions,
                                        Outcome verified);

}  // namespace Tamber::Cli
