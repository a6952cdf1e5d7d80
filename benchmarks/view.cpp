// The text of the program-memory view, against plain loops.

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

#include "BoardProcess.hpp"
#include "DumpYardstick.hpp"
#include "Measure.hpp"
#include "Memories.hpp"
#include "Microbenchmark.hpp"
#include "Row.hpp"
#include "core/ImageSummary.hpp"
#include "ui/DumpText.hpp"

namespace Tamber::Bench {
namespace {

void MeasureScrollStep(Memories& with, int repetitions) {
    const int words = MemoryImage::ProgramWordsMax;
    int row = 0;
    const auto nextRow = [&row] { return row = (row + 1) % 1008; };
    Require(ProgramDump(with.Image, 5) == DumpRows(with.Plain.data(), 5) &&
                ProgramChecksum(with.Image, words) == SumOf(with.Plain.data(), words),
            "program and yardstick do not make the same text");
    const Medians steps = CompareShort(
        repetitions,
        [&] {
            benchmark::DoNotOptimize(ProgramDump(with.Image, nextRow()));
            benchmark::DoNotOptimize(ProgramChecksum(with.Image, words));
        },
        [&] {
            benchmark::DoNotOptimize(DumpRows(with.Plain.data(), static_cast<unsigned>(nextRow())));
            benchmark::DoNotOptimize(SumOf(with.Plain.data(), words));
        });
    PrintLimit("Scroll step: text and checksum, 8,192 words", steps.Program, steps.Yardstick,
               Microseconds, 10e-6);
}

}  // namespace
}  // namespace Tamber::Bench

int main(int count, char** values) {
    using namespace Tamber::Bench;
    const int repetitions = count > 1 && std::strcmp(values[1], "--quick") == 0 ? 3 : 11;
    UseCore(0);
    const auto with = std::make_unique<Memories>();
    MeasureScrollStep(*with, repetitions);
}
