#include "cli/Interruption.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string_view>

#include "cli/ExitStatus.hpp"

namespace Tamber::Cli {
namespace {

// A signal handler can reach nothing but objects of static storage.
volatile std::sig_atomic_t noted = 0;
std::array<int, 2> wake{-1, -1};  // the ends of a pipe: to read from, to write to

constexpr std::array Caught{SIGINT, SIGTERM};

constexpr std::string_view Hint = "\nEnding at the next block; once more ends at once.\n";

// Where nobody takes it, there is nobody to tell.
void Write(int file, std::string_view text) {
    [[maybe_unused]] const auto written = write(file, text.data(), text.size());
}

extern "C" void NoteInterruption(int) {
    if (noted != 0)
        _exit(static_cast<int>(ExitStatus::Interrupted));
    noted = 1;
    Write(wake[1], "!");
    if (isatty(STDERR_FILENO) == 1)
        Write(STDERR_FILENO, Hint);
}

}  // namespace

void CatchInterruptions() {
    if (pipe2(wake.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        wake = {-1, -1};
    struct sigaction action {};
    action.sa_handler = NoteInterruption;
    action.sa_flags = SA_RESTART;
    for (const int signal : Caught)
        sigaction(signal, &action, nullptr);
    struct sigaction hangUp {};
    sigaction(SIGHUP, nullptr, &hangUp);
    if (hangUp.sa_handler != SIG_IGN)  // who starts it with nohup means it
        sigaction(SIGHUP, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

bool InterruptionNoted() {
    return noted != 0;
}

int InterruptionSign() {
    return wake[0];
}

}  // namespace Tamber::Cli
