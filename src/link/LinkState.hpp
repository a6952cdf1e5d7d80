#pragma once

#include <cstdint>
#include <vector>

namespace Tamber {

/// What the exchanges with the board share.
struct LinkState {
    std::int16_t ExpectedReplyLength = 0;  ///< bytes the next wait is for; set before each wait
    bool ReplyTimedOut = false;            ///< set by the time-out tick, cleared as a wait begins
    std::vector<std::uint8_t> ReplyBytes;  ///< the last reply taken from the port
    bool ProgrammerFound = false;          ///< the board answered at start-up
};

}  // namespace Tamber
