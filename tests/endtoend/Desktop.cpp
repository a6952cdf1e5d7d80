#include "Desktop.hpp"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

namespace Tamber {
namespace {

[[noreturn]] void Become(const std::vector<std::string>& arguments,
                         const std::filesystem::path& folder, const std::filesystem::path& output) {
    const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    dup2(file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    std::vector<char*> pointers;
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1);
    if (chdir(folder.c_str()) == 0)
        execvp(pointers[0], pointers.data());
    _exit(127);
}

int Run(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str());
}

}  // namespace

Process::Process(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                 const std::filesystem::path& output)
    : pid_(fork()) {
    if (pid_ == 0)
        Become(arguments, folder, output);
}

Process::~Process() {
    if (pid_ <= 0)
        return;
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
}

void Process::Signal(int signal) const {
    kill(pid_, signal);
}

bool Process::Ended() const {
    siginfo_t info{};
    return waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == pid_;
}

int Process::Wait() {
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

Desktop::Desktop(const std::filesystem::path& folder)
    : server_({"sh", "-c", "exec Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>display"},
              folder, folder / "xvfb.log") {
    const std::filesystem::path number = folder / "display";
    Await([&] { return Contents(number).ends_with('\n'); });
    display_ = ":" + Contents(number).substr(0, Contents(number).find('\n'));
}

bool Desktop::HasKeyboard(const std::string& title) const {
    return Run("test \"$(DISPLAY=" + display_ + " xdotool getwindowfocus getwindowname)\" = '" +
               title + "'") == 0;
}

bool Desktop::AwaitWindow(const std::string& title) const {
    return Await([&] { return HasKeyboard(title); });
}

bool Desktop::PressUntil(const std::string& keys, const std::function<bool()>& condition) const {
    constexpr int LooksPerPress = 60;  // some seconds
    int looks = 0;
    return Await([&] {
        if (looks++ % LooksPerPress == 0)
            Press(keys);
        return condition();
    });
}

bool Desktop::PressUntil(const std::string& keys, const std::string& title) const {
    return PressUntil(keys, [&] { return HasKeyboard(title); });
}

void Desktop::Press(const std::string& keys) const {
    Run("DISPLAY=" + display_ + " xdotool key --delay 50 " + keys);
}

void Desktop::Type(const std::string& text) const {
    Run("DISPLAY=" + display_ + " xdotool type --delay 20 '" + text + "'");
}

bool Await(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return true;
}

std::string Contents(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

}  // namespace Tamber
