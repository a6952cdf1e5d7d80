#include "simulator/TraceOutput.hpp"

#include <limits.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>

namespace Tamber::Simulator {

namespace {

constexpr std::size_t MostHeld = 4 * 1024 * 1024;

// A pipe that is ready takes at least this much without waiting.
constexpr std::size_t Portion = PIPE_BUF;

}  // namespace

TraceOutput::~TraceOutput() {
    Show(1000);
}

void TraceOutput::Add(std::string_view line) {
    if (lines_.size() < MostHeld)
        lines_.append(line).append("\n");
}

void TraceOutput::Show(int patienceMilliseconds) {
    std::size_t shown = 0;
    pollfd wanted{STDERR_FILENO, POLLOUT, 0};
    while (shown < lines_.size() && ::poll(&wanted, 1, patienceMilliseconds) == 1) {
        const auto length = std::min(Portion, lines_.size() - shown);
        const auto written = ::write(STDERR_FILENO, lines_.data() + shown, length);
        if (written <= 0)
            break;
        shown += static_cast<std::size_t>(written);
    }
    lines_.erase(0, shown);
}

}  // namespace Tamber::Simulator
