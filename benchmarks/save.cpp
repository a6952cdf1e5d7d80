// Writing HEX files, against a plain writer.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <memory>

#include "BoardProcess.hpp"
#include "Measure.hpp"
#include "Memories.hpp"
#include "Microbenchmark.hpp"
#include "Row.hpp"
#include "files/HexSave.hpp"

namespace Tamber::Bench {
namespace {

std::string PlainText(const Memory& memory) {
    std::string text;
    AppendHex(text, memory.data(), 0, 2 * MemoryImage::ProgramWordsMax);
    AppendHex(text, memory.data(), MemoryImage::IdLocations, MemoryImage::BlockBytes);
    AppendHex(text, memory.data(), MemoryImage::Eeprom, 2 * MemoryImage::EepromBytesMax);
    return text.append(EndRecord);
}

// Creates or empties the file, writes it and forces it to the disk.
void WritePlainly(const std::filesystem::path& path, const std::string& text) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    Require(::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
                ::fsync(file) == 0,
            "no save");
    ::close(file);
}

// The text of a save; and the whole of it, which forces the file to the disk as the yardstick does.
void MeasureSave(Memories& with, int repetitions) {
    const int words = MemoryImage::ProgramWordsMax;
    Require(HexFileText(with.Image, words) == PlainText(with.Plain),
            "program and yardstick do not write the same");
    const Medians texts = CompareShort(
        repetitions, [&] { benchmark::DoNotOptimize(HexFileText(with.Image, words)); },
        [&] { benchmark::DoNotOptimize(PlainText(with.Plain)); });
    PrintUnbound("Save 8,192 words as HEX, the text alone", texts.Program, texts.Yardstick,
                 Microseconds);
    const auto folder = std::filesystem::temp_directory_path();
    const Medians files = CompareShort(
        repetitions,
        [&] { Require(!SaveHexFile(folder / "tamber-bench-a.hex", with.Image, words), "no save"); },
        [&] { WritePlainly(folder / "tamber-bench-b.hex", PlainText(with.Plain)); });
    PrintUnbound("Save 8,192 words as HEX, to the disk", files.Program, files.Yardstick,
                 Milliseconds);
    std::filesystem::remove(folder / "tamber-bench-a.hex");
    std::filesystem::remove(folder / "tamber-bench-b.hex");
}

}  // namespace
}  // namespace Tamber::Bench

int main(int count, char** values) {
    using namespace Tamber::Bench;
    const int repetitions = count > 1 && std::strcmp(values[1], "--quick") == 0 ? 3 : 11;
    UseCore(0);
    const auto with = std::make_unique<Memories>();
    MeasureSave(*with, repetitions);
}
