#pragma once

#include "link/BoardIdentity.hpp"

namespace Tamber {

/// What is known about the board.
struct LinkState {
    bool ProgrammerFound = false;  ///< the board answered at start-up
    BoardIdentity Board;           ///< how it answered; empty texts when it did not
};

}  // namespace Tamber
