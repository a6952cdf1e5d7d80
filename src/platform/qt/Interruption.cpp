#include "platform/qt/Interruption.hpp"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

namespace Tamber {
namespace {

// A signal handler can reach nothing but objects of static storage.
volatile std::sig_atomic_t signalNoted = 0;
std::array<int, 2> wake{-1, -1};  // the ends of a pipe: to read from, to write to
int statusAtOnce = 0;
const char* terminalHint = "";

// When it fails, no one is there to read it.
void Write(int file, const char* text) {
    [[maybe_unused]] const auto written = write(file, text, std::strlen(text));
}

extern "C" void NoteInterruption(int) {
    if (signalNoted != 0)
        _exit(statusAtOnce);
    signalNoted = 1;
    Write(wake[1], "!");
    if (isatty(STDERR_FILENO) == 1)
        Write(STDERR_FILENO, terminalHint);
}

void CatchSignals() {
    struct sigaction action {};
    action.sa_handler = NoteInterruption;
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    struct sigaction hangUp {};
    sigaction(SIGHUP, nullptr, &hangUp);
    if (hangUp.sa_handler != SIG_IGN)
        sigaction(SIGHUP, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace

// One wake-up is enough: what waits then asks, and an interruption stays one.
Interruption::Interruption(int status, const char* hint) {
    statusAtOnce = status;
    terminalHint = hint;
    if (pipe2(wake.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        wake = {-1, -1};
    CatchSignals();
    if (wake[0] < 0)
        return;
    notifier_.emplace(wake[0], QSocketNotifier::Read);
    QObject::connect(&*notifier_, &QSocketNotifier::activated, &*notifier_, [this] {
        notifier_->setEnabled(false);
        onNoted_();
    });
}

// What wakes the event loop stays readable.
bool Interruption::AwaitInput(int descriptor) const {
    std::array<pollfd, 2> wanted{{{descriptor, POLLIN, 0}, {wake[0], POLLIN, 0}}};
    while (!Noted() && poll(wanted.data(), wanted.size(), -1) < 0 && errno == EINTR)
        ;
    return !Noted();
}

bool Interruption::Noted() const {
    return signalNoted != 0;
}

}  // namespace Tamber
