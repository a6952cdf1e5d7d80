#pragma once

#include <functional>
#include <string>

#include "simulator/BoardLine.hpp"
#include "simulator/PseudoTerminal.hpp"

namespace Tamber::Simulator {

/// Takes the signals SIGTERM, SIGINT and SIGUSR1 into the program's own hands: from here on they
/// are only noticed inside Serve. To be called once, before anybody is told that the board is up.
void CatchSignals();

/// Brings the bytes of the pseudo-terminal to the board and back until SIGTERM or SIGINT comes or
/// the board hangs up. It sleeps whenever nothing is due. `save` is called on each SIGUSR1;
/// `afterReply` after each round, when its replies have gone out. True: ended by a signal; false:
/// the board hung up.
bool Serve(BoardLine& line, const BoardClock& clock, const PseudoTerminal& terminal,
           const std::function<void()>& save, const std::function<void()>& afterReply);

}  // namespace Tamber::Simulator
