// The two readers of files from outside, fed with anything. The first two bytes of the input choose
// the reader and, for a HEX file, where it is cut off. LLVMFuzzerTestOneInput is the entry that
// coverage guided fuzzers call; mutate_main.cpp calls it with inputs of its own.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "core/FieldReader.hpp"
#include "files/HexFile.hpp"
#include "files/HexSave.hpp"

namespace {

using namespace Tamber;

void Require(bool holds, const char* promise) {
    if (holds)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

bool SameRecords(const HexRecordTable& one, const HexRecordTable& other) {
    return std::ranges::equal(one, other, {}, &HexRecord::Line, &HexRecord::Line);
}

void ReadAsHexFile(std::string_view text, std::size_t cut) {
    const auto table = ReadHexRecords(text);
    if (!table)
        return;
    MemoryImage image;
    CopyRecords(*table, image);

    const auto part = ReadHexRecords(text.substr(0, cut));
    if (part)
        Require(SameRecords(*table, *part), "a cut file loads as the whole");
    else
        Require(part.error().Fault == HexFault::ChecksumError ||
                    part.error().Fault == HexFault::NoEndRecord,
                "a cut file that does not load says so");

    const std::string saved = HexFileText(image, MemoryImage::ProgramWordsMax);
    const auto savedTable = ReadHexRecords(saved);
    Require(savedTable.has_value(), "a saved file loads");
    MemoryImage again = image;
    CopyRecords(*savedTable, again);
    Require(again == image, "what is saved loads back the same");
}

void ReadAsFields(std::string_view text) {
    constexpr std::int32_t least = -1000;
    constexpr std::int32_t most = 70'000;
    FieldReader fields("file", text);
    for (std::size_t count = 0; !fields.Failure(); ++count) {
        Require(count <= text.size() + 1, "every field takes a character");
        if (count % 2 == 0)
            Require(fields.ReadText("text").find_first_of("\r\n") == std::string::npos,
                    "a field ends at its line's end");
        else if (const int number = fields.ReadNumber("number", least, most); !fields.Failure())
            Require(number >= least && number <= most, "numbers keep the range");
    }
    Require(fields.Failure()->Line >= 1 && fields.Failure()->Field >= 1,
            "a failure names a line and a field");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2)
        return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 2, size - 2);
    if (data[0] % 2 == 0)
        ReadAsHexFile(text, text.size() * (data[0] * 256u + data[1]) >> 16);
    else
        ReadAsFields(text);
    return 0;
}
