#include "simulator/BoardService.hpp"

#include <poll.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <ctime>
#include <vector>

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace Tamber::Simulator {
namespace {

// A signal handler can reach only objects of static storage.
volatile std::sig_atomic_t stopAsked = 0;
volatile std::sig_atomic_t saveAsked = 0;

extern "C" void NoteSignal(int signal) {
    if (signal == SIGUSR1)
        saveAsked = 1;
    else
        stopAsked = 1;
}

constexpr std::array Caught{SIGTERM, SIGINT, SIGUSR1};

// Sleeps until the host has written where that is to be `read`, `due` has come or a signal has been
// noticed.
void Sleep(int descriptor, bool read, const BoardClock& clock,
           std::optional<std::chrono::microseconds> due) {
    timespec left{};
    if (due) {
        const auto wait = std::max(*due - clock(), std::chrono::microseconds{});
        left.tv_sec = static_cast<time_t>(wait.count() / 1'000'000);
        left.tv_nsec = static_cast<long>(wait.count() % 1'000'000 * 1000);
    }
    // The signals are blocked everywhere else: none is missed between checking and sleeping.
    sigset_t none;
    sigemptyset(&none);
    pollfd wanted{descriptor, static_cast<short>(read ? POLLIN : 0), 0};
    ::ppoll(&wanted, 1, due ? &left : nullptr, &none);
}

}  // namespace

void CatchSignals() {
    sigset_t caught;
    sigemptyset(&caught);
    for (const int signal : Caught)
        sigaddset(&caught, signal);
    sigprocmask(SIG_BLOCK, &caught, nullptr);
    struct sigaction action {};
    action.sa_handler = NoteSignal;
    for (const int signal : Caught)
        sigaction(signal, &action, nullptr);
    // The trace may have lost its reader.
    std::signal(SIGPIPE, SIG_IGN);
#ifdef __linux__
    // A byte at 57600 baud lasts 174 microseconds; the usual slack of 50 would show.
    ::prctl(PR_SET_TIMERSLACK, 1UL);
#endif
}

void Serve(BoardLine& line, const BoardClock& clock, const PseudoTerminal& terminal,
           const std::function<void()>& save, const std::function<void()>& afterReply) {
    std::array<std::uint8_t, 4096> buffer{};
    std::vector<std::uint8_t> replies;
    while (!line.HungUp()) {
        Sleep(terminal.Descriptor(), line.Reads(), clock, line.NextDue());
        if (line.Reads())
            line.Receive(terminal.Read(buffer));
        replies.clear();
        line.Take(replies);
        terminal.Write(replies);
        afterReply();
        if (saveAsked != 0) {
            saveAsked = 0;
            save();
        }
        if (stopAsked != 0)
            return;
    }
}

}  // namespace Tamber::Simulator
