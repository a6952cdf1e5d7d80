#include "cli/Interruption.hpp"

#include <unistd.h>

#include <array>
#include <csignal>
#include <string_view>

#include "cli/ExitStatus.hpp"

namespace Tamber::Cli {
namespace {

// A signal handler can reach nothing but objects of static storage.
volatile std::sig_atomic_t noted = 0;

constexpr std::array Caught{SIGINT, SIGTERM};

constexpr std::string_view Hint = "\nEnding at the next block; once more ends at once.\n";

extern "C" void NoteInterruption(int) {
    if (noted != 0)
        _exit(static_cast<int>(ExitStatus::Interrupted));
    noted = 1;
    if (isatty(STDERR_FILENO) == 1 && write(STDERR_FILENO, Hint.data(), Hint.size()) < 0)
        noted = 1;  // nobody can be told
}

}  // namespace

void CatchInterruptions() {
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

}  // namespace Tamber::Cli
