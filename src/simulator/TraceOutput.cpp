#include "simulator/TraceOutput.hpp"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <climits>

namespace Tamber::Simulator {

void TraceOutput::Add(std::string_view line) {
    constexpr std::size_t heldMax = 4 << 20;
    if (lines_.size() < heldMax)
        lines_.append(line).append("\n");
}

void TraceOutput::Write(int patienceMilliseconds) {
    constexpr std::size_t portion = PIPE_BUF;  // a pipe that is ready takes this much at once
    std::size_t written = 0;
    pollfd wanted{STDERR_FILENO, POLLOUT, 0};
    while (written < lines_.size() && ::poll(&wanted, 1, patienceMilliseconds) == 1) {
        const auto length = std::min(portion, lines_.size() - written);
        const auto count = ::write(STDERR_FILENO, lines_.data() + written, length);
        if (count <= 0)
            break;
        written += static_cast<std::size_t>(count);
    }
    lines_.erase(0, written);
}

}  // namespace Tamber::Simulator
