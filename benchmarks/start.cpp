// The start of the program, against that of the least window.

#include <cstdlib>
#include <filesystem>
#include <string>

#include "BoardProcess.hpp"
#include "Measure.hpp"

namespace Tamber::Bench {
namespace {

namespace fs = std::filesystem;

struct Sample {
    double FirstPaint = 0;  ///< seconds
    double Memory = 0;      ///< bytes, the most held
};

// Starts one of the two programs in `folder`; returns when it has ended.
Sample Start(const char* name, const fs::path& folder) {
    const fs::path program = fs::read_symlink("/proc/self/exe").parent_path() / name;
    Process process({program, std::to_string(Time::Now().Wall)}, folder);
    const double paint = std::atof(process.Line().c_str());
    return {paint, static_cast<double>(process.Wait().ru_maxrss) * 1024};
}

void MeasureOn(const char* desktop, const fs::path& folder, int rounds) {
    ::setenv("QT_QPA_PLATFORM", desktop, 1);
    const auto starts = Compare(
        rounds, [&] { return Start("bench-start-program", folder); },
        [&] { return Start("bench-start-minimal", folder); });
    PrintRow(std::string("First paint, the splash, ") + desktop, Milliseconds,
             starts.Of(&Sample::FirstPaint), {.Most = 1.25, .OfRatio = true});
    PrintRow(std::string("Peak memory, ") + desktop, Mebibytes, starts.Of(&Sample::Memory),
             {.Most = 1.5, .OfRatio = true});
}

}  // namespace
}  // namespace Tamber::Bench

int main(int count, char** values) {
    using namespace Tamber::Bench;
    const int rounds = RoundsWanted(count, values);
    const BoardProcess board;
    MeasureOn("offscreen", board.Folder(), rounds);
    if (const char* display = std::getenv("DISPLAY"); display != nullptr && *display != 0)
        MeasureOn("xcb", board.Folder(), rounds);
}
