#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace Tamber {

/// A child process, ended with the test.
class Process {
  public:
    /// Starts `arguments[0]` in `folder`; its output is added to `output`.
    Process(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
            const std::filesystem::path& output);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    void Signal(int signal) const;

    /// The process has ended; Wait returns at once.
    bool Ended() const;

    /// Waits for the end and returns the exit status, or 128 + signal.
    int Wait();

  private:
    pid_t pid_ = -1;
};

/// A virtual display without a window manager, and keys for the windows on it.
class Desktop {
  public:
    explicit Desktop(const std::filesystem::path& folder);

    std::string Display() const { return display_; }

    /// Waits until the window with this title has the keyboard; false when that does not come.
    bool AwaitWindow(const std::string& title) const;

    /// Presses keys, which must do no harm twice, until the condition holds or the window with this
    /// title has the keyboard: a bare display may lose keys while the keyboard changes hands.
    bool PressUntil(const std::string& keys, const std::function<bool()>& condition) const;
    bool PressUntil(const std::string& keys, const std::string& title) const;

    /// Presses keys as xdotool names them, or types a text, in the window that has the keyboard.
    void Press(const std::string& keys) const;
    void Type(const std::string& text) const;

  private:
    bool HasKeyboard(const std::string& title) const;

    Process server_;
    std::string display_;
};

/// Asks `condition` again and again until it holds; false after a minute.
bool Await(const std::function<bool()>& condition);

/// The whole of a file, empty when it is not there.
std::string Contents(const std::filesystem::path& file);

}  // namespace Tamber
