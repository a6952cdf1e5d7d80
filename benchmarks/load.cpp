// Reading HEX files, against a plain reader.

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

#include "BoardProcess.hpp"
#include "Instructions.hpp"
#include "Measure.hpp"
#include "Memories.hpp"
#include "Microbenchmark.hpp"
#include "Row.hpp"
#include "core/TextFile.hpp"
#include "files/HexFile.hpp"

namespace Tamber::Bench {

// Outside the nameless namespace and not inlined, so that they can be counted by name.
[[gnu::noinline]] void ReadByProgram(const std::string& text, MemoryImage& image) {
    HexRecordTable table;
    table.reserve(HexRecordTableMax);
    const HexReadResult result = ReadHexRecords(text, table);
    Require(result.Outcome == HexOutcome::Loaded, "the HEX text is not taken");
    CopyRecords(table, image);
}

[[gnu::noinline]] void ReadByYardstick(const std::string& text, Memory& memory) {
    Require(ReadHex(text, memory), "the yardstick does not take the HEX text");
}

namespace {

constexpr int Lines = 10'000;
constexpr double InstructionRatioMax = 2;

void MeasureLoad(Memories& with, int repetitions) {
    const auto file = std::filesystem::temp_directory_path() / "tamber-bench-10000.hex";
    std::ofstream(file, std::ios::binary) << with.Text;
    const Medians files = CompareShort(
        repetitions,
        [&] { Require(LoadHexFile(file, with.Image).Outcome == HexOutcome::Loaded, "no load"); },
        [&] {
            const auto text = ReadTextFile(file);
            Require(text.Ok() && ReadHex(text.Value(), with.Plain), "no load");
        });
    const auto image = with.Image.Bytes(0, 0x10000);
    Require(std::equal(image.begin(), image.end(), with.Plain.begin()),
            "program and yardstick have not read the same");
    PrintLimit("Load 10,000 lines of HEX, file and all", files.Program, files.Yardstick,
               Milliseconds, 1e-3);
    std::filesystem::remove(file);
}

void MeasureRead(Memories& with, int repetitions) {
    const Medians texts = CompareShort(
        repetitions, [&] { ReadByProgram(with.Text, with.Image); },
        [&] { ReadByYardstick(with.Text, with.Plain); });
    PrintLimit("Read 10,000 lines of HEX, text to image", texts.Program, texts.Yardstick,
               Milliseconds, 1e-3);
}

void CountInstructions(Memories& with) {
    const char* figure = "Read HEX, instructions per record";
    auto program = CountedByProcessor([&] { ReadByProgram(with.Text, with.Image); });
    auto yardstick = CountedByProcessor([&] { ReadByYardstick(with.Text, with.Plain); });
    const bool byProcessor = program && yardstick;
    if (!byProcessor) {
        program = CountedByValgrind("read-once", "Tamber::Bench::ReadByProgram*");
        yardstick = CountedByValgrind("read-once", "Tamber::Bench::ReadByYardstick*");
    }
    if (!program || !yardstick)
        return PrintMissing(figure, "neither the processor nor valgrind counts");
    std::cerr << "instructions are counted by " << (byProcessor ? "the processor" : "valgrind")
              << std::endl;
    PrintRatio(figure, *program / Lines, *yardstick / Lines, Plain, InstructionRatioMax);
}

}  // namespace
}  // namespace Tamber::Bench

int main(int count, char** values) {
    using namespace Tamber::Bench;
    const auto with = std::make_unique<Memories>();
    if (count > 1 && std::strcmp(values[1], "read-once") == 0) {
        ReadByProgram(with->Text, with->Image);
        ReadByYardstick(with->Text, with->Plain);
        return 0;
    }
    const int repetitions = count > 1 && std::strcmp(values[1], "--quick") == 0 ? 3 : 11;
    UseCore(0);
    MeasureLoad(*with, repetitions);
    MeasureRead(*with, repetitions);
    CountInstructions(*with);
}
