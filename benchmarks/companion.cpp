// The command-line companion as whole processes, against a loop of the system's own calls.

#include <memory>
#include <string>
#include <vector>

#include "BoardProcess.hpp"
#include "Measure.hpp"
#include "RawPort.hpp"
#include "files/HexSave.hpp"

namespace Tamber::Bench {
namespace {

constexpr int Blocks = MemoryImage::ProgramWordsMax / 8;
constexpr double Silence = 0.020;  // seconds; nothing may follow an identification for so long

// Runs the companion to its end.
void Run(const BoardProcess& board, std::vector<std::string> words) {
    words.insert(words.begin(), CLI_PROGRAM);
    Process(words, board.Folder()).Wait();
}

// The job without the start: what it takes longer than an identification, apart from the `pause`
// in seconds that the function lets pass after its region.
Time RunJob(const BoardProcess& board, const std::vector<std::string>& words, double pause) {
    const Time start = Timed([&] { Run(board, {"identify"}); });
    return Timed([&] { Run(board, words); }) - start - Time{pause, 0};
}

void MeasureStart(const BoardProcess& board, RawPort& raw, int rounds) {
    const auto starts = Compare(
        rounds, [&] { return Timed([&] { Run(board, {"identify"}); }); },
        [&] { return Timed([&] { raw.Identify(); }); });
    const Figure start = starts.Of(&Time::Wall);
    PrintRow("Companion, start beyond identification", Milliseconds,
             {start.Measured - start.Yardstick - Silence}, {.Most = 0.050});
}

void MeasureJob(const BoardProcess& board, RawPort& raw, int rounds,
                const std::vector<std::string>& words, double pause) {
    const std::string name = "Companion, " + words[0] + " 8,192 words, wall";
    const bool writes = words[0] == "program";
    const auto jobs = Compare(
        rounds, [&] { return RunJob(board, words, pause); },
        [&] { return Timed([&] { writes ? raw.WriteBlocks(Blocks) : raw.ReadBlocks(Blocks); }); });
    PrintRow(name, Milliseconds, jobs.Of(&Time::Wall), {.Most = 1.25, .OfRatio = true});
}

void MeasureAll(int rounds) {
    const BoardProcess board;
    const BoardProcess rawBoard;
    RawPort raw(rawBoard.Port());
    const auto image = std::make_unique<MemoryImage>();
    FillProgramMemory(*image);
    Require(
        SaveHexFile(board.Folder() / "job.hex", *image, MemoryImage::ProgramWordsMax).has_value(),
        "cannot write a HEX file");
    MeasureStart(board, raw, 3 * rounds);
    MeasureJob(board, raw, rounds, {"program", "job.hex", "--only", "pm"}, 1.0);
    MeasureJob(board, raw, 3 * rounds, {"verify", "job.hex", "--only", "pm"}, 0.1);
    MeasureJob(board, raw, 3 * rounds, {"read", "job.hex", "--only", "pm"}, 0.1);
}

}  // namespace
}  // namespace Tamber::Bench

int main(int count, char** values) {
    Tamber::Bench::MeasureAll(Tamber::Bench::RoundsWanted(count, values));
}
