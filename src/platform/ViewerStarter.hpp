#pragma once

#include <functional>
#include <string>
#include <vector>

namespace Tamber {

/// Starts other programs that show something to the user, such as the system's help viewer.
class ViewerStarter {
  public:
    virtual ~ViewerStarter() = default;

    /// Starts `program`, found as the system finds programs, with `arguments` in the directory that
    /// is current now, as a process that outlives this one. Never waits.
    /// `failed` is called, at most once, when the program cannot be started, or when it ends within
    /// its first moments in a crash or with a status other than 0: at once, or while events are
    /// being delivered.
    virtual void Start(const std::string& program, const std::vector<std::string>& arguments,
                       std::function<void()> failed) = 0;
};

}  // namespace Tamber
