// Work too short to be timed one go at a time: HEX files and the text of a view.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
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

namespace fs = std::filesystem;

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

// Prints the median processor time of a benchmark's repetitions as a row.
class RowReporter final : public benchmark::BenchmarkReporter {
  public:
    RowReporter(Unit unit, const Bound& bound) : unit_(unit), bound_(bound) {}

    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
                PrintRow(run.run_name.function_name, unit_, {run.GetAdjustedCPUTime()}, bound_);
    }

  private:
    Unit unit_;
    Bound bound_;
};

template <typename Work>
void Measure(const char* name, int repetitions, Unit unit, const Bound& bound, Work work) {
    benchmark::RegisterBenchmark(name,
                                 [&work](benchmark::State& state) {
                                     for ([[maybe_unused]] auto go : state)
                                         work();
                                 })
        ->Unit(benchmark::kSecond)
        ->MinTime(0.02)
        ->Repetitions(repetitions);
    RowReporter reporter(unit, bound);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::ClearRegisteredBenchmarks();
}

void MeasureTimes(int repetitions, const std::string& text, MemoryImage& image) {
    const fs::path file = fs::temp_directory_path() / "tamber-bench.hex";
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
    fs::remove(file);
}

// Starts this program again under valgrind, which in the end prints "==123== Collected : 456": the
// instructions spent in `function`.
void CountInstructions(const char* name, const std::string& function, int parts, double most) {
    Process valgrind({"valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
                      "--log-fd=1", "--toggle-collect=Tamber::Bench::" + function + "*",
                      fs::read_symlink("/proc/self/exe"), "once"},
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
    if (count > 1 && std::strcmp(values[1], "once") == 0) {
        WriteText(*image);
        ShowRows(*image, 0);
        return EXIT_SUCCESS;
    }
    UseCore(0);
    MeasureTimes(RoundsWanted(count, values), text, *image);
    std::cerr << "Instructions ..." << std::endl;
    CountInstructions("Read HEX, instructions a record", "ReadText", Lines, 650);
    CountInstructions("Write HEX, instructions a record", "WriteText", Rows + 34, 310);
    CountInstructions("Dump, instructions a row", "ShowRows", ProgramDumpRows, 1300);
}
