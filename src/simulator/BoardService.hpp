#pragma once

#include <functional>

#include "simulator/BoardLine.hpp"
#include "simulator/PseudoTerminal.hpp"

namespace Tamber::Simulator {

/// Catches SIGTERM, SIGINT and SIGUSR1: from here on they act only inside Serve. To be called once,
/// before anyone learns that the board is up.
void CatchSignals();

/// Carries the bytes between the pseudo-terminal and the board until SIGTERM or SIGINT comes or the
/// board hangs up. It sleeps whenever nothing is due. `save` is called on each SIGUSR1;
/// `afterReply` after each round, when its replies have gone out.
void Serve(BoardLine& line, const BoardClock& clock, const PseudoTerminal& terminal,
           const std::function<void()>& save, const std::function<void()>& afterReply);

}  // namespace Tamber::Simulator
