#pragma once

#include <QSocketNotifier>
#include <functional>
#include <optional>

namespace Tamber {

/// SIGINT, SIGTERM and SIGHUP ask the program to end: the first one wakes the event loop, a second
/// one ends the program at once. A SIGHUP that is ignored, as under nohup, stays so; SIGPIPE is
/// ignored. Needs a QCoreApplication that outlives it, and is made once.
class Interruption {
  public:
    /// The second signal ends the program with `status`. At the first one `hint`, of static
    /// storage, is written to standard error where that is a terminal.
    Interruption(int status, const char* hint);

    /// A signal has come.
    bool Noted() const;

    /// Waits, and delivers no events meanwhile, until `descriptor` has something to read or has
    /// come to its end. False: a signal has come first.
    bool AwaitInput(int descriptor) const;

    /// Calls `noted` once, from the event loop, after the first signal.
    void OnNoted(std::function<void()> noted) { onNoted_ = std::move(noted); }

  private:
    std::optional<QSocketNotifier> notifier_;
    std::function<void()> onNoted_ = [] {};
};

}  // namespace Tamber
