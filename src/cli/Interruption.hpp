#pragma once

namespace Tamber::Cli {

/// Takes SIGINT, SIGTERM and SIGHUP into the program's own hands. The first one is only noted; the
/// second ends the program at once. A SIGHUP that is ignored stays so. Also has a reader that goes
/// away end nothing.
void CatchInterruptions();

/// True once one of them has come.
bool InterruptionNoted();

/// A file descriptor that can be read from once one of them has come, for whoever sleeps on files;
/// -1 when the system had none to give.
int InterruptionSign();

}  // namespace Tamber::Cli
