// The start of the program, against that of the least window.

#include <fcntl.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "BoardProcess.hpp"
#include "Measure.hpp"
#include "Row.hpp"

namespace Tamber::Bench {
namespace {

namespace fs = std::filesystem;

constexpr double PaintRatioMax = 1.25;
constexpr double MemoryRatioMax = 1.5;

// Goes on as `program`, which is told the moment at which it began.
[[noreturn]] void Become(const fs::path& program, const fs::path& folder, int output) {
    ::dup2(output, STDOUT_FILENO);
    if (::chdir(folder.c_str()) == 0) {
        timespec now{};
        ::clock_gettime(CLOCK_MONOTONIC, &now);
        const std::string begin = std::to_string(now.tv_sec * 1'000'000'000LL + now.tv_nsec);
        ::execl(program.c_str(), program.c_str(), begin.c_str(), nullptr);
    }
    ::_exit(127);
}

// What one start showed, in seconds and bytes.
struct Figures {
    std::vector<double> FirstPaint;
    std::vector<double> MainPaint;
    std::vector<double> Memory;
};

// Starts one of the two programs in `folder`; returns when it has ended.
Spent Start(const char* name, const fs::path& folder, Figures& figures) {
    const fs::path program = fs::read_symlink("/proc/self/exe").parent_path() / name;
    std::array<int, 2> output{};
    Require(::pipe2(output.data(), O_CLOEXEC) == 0, "no pipe");
    const Moment begin = Moment::Now();
    const pid_t child = ::fork();
    if (child == 0)
        Become(program, folder, output[1]);
    ::close(output[1]);
    FILE* const answer = ::fdopen(output[0], "r");
    double first = 0;
    double main = 0;
    double kibibytes = 0;
    const bool good = std::fscanf(answer, "%lf %lf %lf", &first, &main, &kibibytes) == 3;
    std::fclose(answer);
    ::waitpid(child, nullptr, 0);
    Require(good, std::string(name) + " does not start");
    figures.FirstPaint.push_back(first * 1e-9);
    figures.MainPaint.push_back(main * 1e-9);
    figures.Memory.push_back(kibibytes * 1024);
    return Moment::Now().Since(begin);
}

void MeasureOn(const std::string& desktop, const fs::path& folder, int rounds) {
    std::cerr << "Start, " << desktop << " ..." << std::endl;
    ::setenv("QT_QPA_PLATFORM", desktop.c_str(), 1);
    Figures program;
    Figures minimal;
    Compare(
        rounds, [&] { return Start("bench-start-program", folder, program); },
        [&] { return Start("bench-start-minimal", folder, minimal); });
    const double yardstick = Median(minimal.FirstPaint);
    PrintRatio("First paint, the splash, " + desktop, Median(program.FirstPaint), yardstick,
               Milliseconds, PaintRatioMax);
    // Two windows, texts and three views against one bare window: told, with no bound.
    PrintUnbound("Main window painted, without waits, " + desktop, Median(program.MainPaint),
                 yardstick, Milliseconds);
    PrintRatio("Peak memory, " + desktop, Median(program.Memory), Median(minimal.Memory), Mebibytes,
               MemoryRatioMax);
}

}  // namespace
}  // namespace Tamber::Bench

int main(int count, char** values) {
    using namespace Tamber::Bench;
    const int rounds = count > 1 && std::strcmp(values[1], "--quick") == 0 ? 3 : 11;
    const BoardProcess board;
    MeasureOn("offscreen", board.Folder(), rounds);
    if (const char* display = ::getenv("DISPLAY"); display != nullptr && *display != 0)
        MeasureOn("xcb", board.Folder(), rounds);
}
