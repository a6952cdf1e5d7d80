// The command-line companion as whole processes, against a loop of the system's own calls.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "BoardProcess.hpp"
#include "Measure.hpp"
#include "Memories.hpp"
#include "RawPort.hpp"
#include "Row.hpp"
#include "core/MemoryImage.hpp"
#include "files/HexSave.hpp"

namespace Tamber::Bench {
namespace {

constexpr int Blocks = MemoryImage::ProgramWordsMax / 8;
constexpr double StartMax = 0.050;  // seconds, apart from the identification
constexpr int Silence = 20;         // milliseconds that nothing may follow an identification
constexpr double WallRatioMax = 1.25;

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// Runs the companion in a board's working folder; returns what the process took, all of it.
class Companion {
  public:
    explicit Companion(const std::filesystem::path& folder) : folder_(folder) {
        ::posix_spawn_file_actions_init(&actions_);
        ::posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
    Companion(const Companion&) = delete;
    Companion& operator=(const Companion&) = delete;
    ~Companion() { ::posix_spawn_file_actions_destroy(&actions_); }

    Spent Run(std::vector<std::string> words) const {
        words.insert(words.begin(), {CLI_PROGRAM, "-C", folder_});
        const std::vector<char*> values = Values(words);
        pid_t process = -1;
        int status = -1;
        rusage used{};
        const Moment begin = Moment::Now();
        Require(
            ::posix_spawn(&process, values[0], &actions_, nullptr, values.data(), environ) == 0 &&
                ::wait4(process, &status, 0, &used) == process && status == 0,
            "tamber-cli " + words[3] + " fails");
        return {Moment::Now().Since(begin).Wall, Seconds(used.ru_utime) + Seconds(used.ru_stime)};
    }

    // What a command takes longer than an identification: the job without the start.
    Spent RunBeyondStart(const std::vector<std::string>& words) const {
        const Spent start = Run({"identify"});
        const Spent whole = Run(words);
        return {whole.Wall - start.Wall, whole.Processor - start.Processor};
    }

  private:
    std::filesystem::path folder_;
    posix_spawn_file_actions_t actions_{};
};

void WriteHex(const std::filesystem::path& path) {
    const auto image = std::make_unique<MemoryImage>();
    FillProgramMemory(*image);
    Require(SaveHexFile(path, *image, MemoryImage::ProgramWordsMax).has_value(),
            "cannot write " + path.string());
}

void MeasureStart(const Companion& companion, RawPort& raw, int rounds) {
    std::cerr << "Companion's start ..." << std::endl;
    const Comparison starts = Compare(
        rounds, [&] { return companion.Run({"identify"}); }, [&] { return raw.Identify(Silence); });
    PrintLimit("Companion, start beyond identification",
               starts.Program.Wall() - starts.Yardstick.Wall(), starts.Yardstick.Wall(),
               Milliseconds, StartMax);
}

struct Job {
    const char* name;
    std::vector<std::string> words;
    double pause;  // seconds that the function lets pass behind its region
    Spent (RawPort::*yardstick)(int blocks);
};

void MeasureJob(const Companion& companion, RawPort& raw, int rounds, const Job& job) {
    std::cerr << job.name << " ..." << std::endl;
    const Comparison jobs = Compare(
        rounds, [&] { return companion.RunBeyondStart(job.words); },
        [&] {
            const Spent spent = (raw.*job.yardstick)(Blocks);
            raw.EndAndPause(0);
            return spent;
        });
    const std::string name = std::string("Companion, ") + job.name + " 8,192 words, ";
    PrintRatio(name + "wall", jobs.Program.Wall() - job.pause, jobs.Yardstick.Wall(), Milliseconds,
               WallRatioMax);
    PrintUnbound(name + "processor", jobs.Program.Processor(), jobs.Yardstick.Processor(),
                 Milliseconds);
}

void MeasureAll(int rounds) {
    const BoardProcess board;
    const BoardProcess rawBoard;
    const Companion companion(board.Folder());
    RawPort raw(rawBoard.Port());
    const std::string file = board.Folder() / "job.hex";
    WriteHex(file);
    MeasureStart(companion, raw, 3 * rounds);
    MeasureJob(companion, raw, rounds,
               {"program", {"program", file, "--only", "pm"}, 1.0, &RawPort::WriteBlocks});
    MeasureJob(companion, raw, 3 * rounds,
               {"verify", {"verify", file, "--only", "pm"}, 0.1, &RawPort::ReadBlocks});
    MeasureJob(companion, raw, 3 * rounds,
               {"read", {"read", file, "--only", "pm"}, 0.1, &RawPort::ReadBlocks});
}

}  // namespace
}  // namespace Tamber::Bench

int main(int count, char** values) {
    const bool quick = count > 1 && std::strcmp(values[1], "--quick") == 0;
    Tamber::Bench::MeasureAll(quick ? 3 : 11);
}
