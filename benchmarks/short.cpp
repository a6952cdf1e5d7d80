// Work too short to be timed one go at a time: HEX files and the text of a view.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "BoardProcess.hpp"
#include "Measure.hpp"
#include "core/ImageSummary.hpp"
#include "files/HexFile.hpp"
#include "files/HexSave.hpp"
#include "ui/DumpText.hpp"

namespace Tamber::Bench {

// Not inlined, and visible, so that their instructions can be counted by name.
[[gnu::noinline]] void ReadText(const std::string& text, MemoryImage& image) {
    const auto table = ReadHexRecords(text);
    Require(table.has_value(), "the HEX text is not accepted");
    CopyRecords(*table, image);
}

[[gnu::noinline]] void WriteText(const MemoryImage& image) {
    benchmark::DoNotOptimize(HexFileText(image, MemoryImage::ProgramWordsMax));
}

[[gnu::noinline]] void ShowRows(const MemoryImage& image, int topRow) {
    benchmark::DoNotOptimize(ProgramDump(image, topRow));
}

namespace {

constexpr int Lines = HexRecordTableMax;
constexpr int Rows = MemoryImage::ProgramWordsMax / 8;

// 9,999 data records, the image's program memory again and again, and the end record.
std::string HexText(const MemoryImage& image) {
    constexpr std::size_t LineLength = 45;
    const std::string memory =
        HexFileText(image, MemoryImage::ProgramWordsMax).substr(0, Rows * LineLength);
    std::string text;
    while (text.size() < Lines * LineLength)
        text += memory;
    return text.substr(0, (Lines - 1) * LineLength) + ":00000001FF\r\n";
}

// Keeps the median processor time of a benchmark's repetitions.
class MedianReporter final : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
                Median = run.GetAdjustedCPUTime();
    }

    double Median = 0;
};

template <typename Work>
void Measure(const char* name, int repetitions, Unit unit, const Bound& bound, Work work) {
    const auto repeat = [&work](benchmark::State& state) {
        for ([[maybe_unused]] auto go : state)
            work();
    };
    benchmark::RegisterBenchmark(name, repeat)
        ->Unit(benchmark::kSecond)
        ->MinTime(0.02)
        ->Repetitions(repetitions);
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::ClearRegisteredBenchmarks();
    PrintRow(name, unit, {reporter.Median}, bound);
}

void MeasureTimes(int repetitions, const std::string& text, MemoryImage& image) {
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "tamber-bench.hex";
    std::ofstream(file, std::ios::binary) << text;
    Measure("Load 10,000 lines of HEX, file and all", repetitions, Milliseconds, {.Most = 1e-3},
            [&] { Require(LoadHexFile(file, image).has_value(), "the HEX file is not accepted"); });
    Measure("Save 8,192 words as HEX, the text alone", repetitions, Microseconds, {},
            [&] { WriteText(image); });
    int row = 0;
    Measure("Scroll step: text and checksum, 8,192 words", repetitions, Microseconds,
            {.Most = 10e-6}, [&] {
                row = (row + 1) % (Rows - ProgramDumpRows);
                ShowRows(image, row);
                benchmark::DoNotOptimize(ProgramChecksum(image, MemoryImage::ProgramWordsMax));
            });
    std::filesystem::remove(file);
}

// Starts this program again under valgrind, which in the end prints "==123== Collected : 456": the
// instructions spent in `function`.
void CountInstructions(const char* name, const std::string& function, int parts, double most) {
    Process valgrind({"valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
                      "--log-fd=1", "--toggle-collect=Tamber::Bench::" + function + "*",
                      std::filesystem::read_symlink("/proc/self/exe"), "once"},
                     "/");
    const std::string mark = "Collected :";
    std::string line;
    while (line.find(mark) == std::string::npos)
        line = valgrind.Line();
    const double counted = std::stod(line.substr(line.find(mark) + mark.size()));
    PrintRow(name, {}, {counted / parts}, {.Most = most});
}

}  // namespace
}  // namespace Tamber::Bench

int main(int count, char** values) {
    using namespace Tamber;
    using namespace Tamber::Bench;
    const auto image = std::make_unique<MemoryImage>();
    FillProgramMemory(*image);
    const std::string text = HexText(*image);
    ReadText(text, *image);
    if (count > 1 && values[1] == std::string("once")) {
        WriteText(*image);
        ShowRows(*image, 0);
        return 0;
    }
    UseCore(0);
    MeasureTimes(RoundsWanted(count, values), text, *image);
    CountInstructions("Read HEX, instructions a record", "ReadText", Lines, 650);
    CountInstructions("Write HEX, instructions a record", "WriteText", Rows + 34, 310);
    CountInstructions("Dump, instructions a row", "ShowRows", ProgramDumpRows, 1300);
}
