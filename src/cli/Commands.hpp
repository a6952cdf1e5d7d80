#pragma once

#include "cli/Context.hpp"

namespace Tamber::Cli {

/// The commands. Each tells its facts to the terminal and to the context's Facts.

[[nodiscard]] Outcome Identify(Context& context);
[[nodiscard]] Outcome ListDevices(Context& context);
[[nodiscard]] Outcome ShowPorts(Context& context);
[[nodiscard]] Outcome ReadToFile(Context& context);
[[nodiscard]] Outcome RunAutoSeries(Context& context);
[[nodiscard]] Outcome InspectFile(Context& context);

/// Erase, blank check, program and verify: one device function.
[[nodiscard]] Outcome RunOneFunction(Context& context);

/// Does what the arguments ask for and tells how it ended, as JSON too where that is wanted.
ExitStatus RunCommand(const Arguments& arguments, Machine& machine, const Streams& streams);

/// Tells of a command line that asks for nothing to be done.
ExitStatus Give(const Answer& answer, const Streams& streams);

}  // namespace Tamber::Cli
