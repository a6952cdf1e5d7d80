// The two readers of files from outside, fed with anything. The first byte of the input chooses the
// reader and which fields are numbers. LLVMFuzzerTestOneInput is the entry that coverage guided
// fuzzers call; mutate_main.cpp calls it with inputs of its own.

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "core/FieldReader.hpp"
#include "files/DeviceCheck.hpp"
#include "files/HexFile.hpp"
#include "files/LineReader.hpp"

namespace {

using namespace Tamber;

void Require(bool holds, const char* promise) {
    if (holds)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

void CheckFindings(const HexInspection& inspection, const DeviceRecord& device) {
    for (const DeviceFinding& finding : CheckForDevice(inspection, device, {}, {}, 0)) {
        const auto [cause, remedy] = WordsOf(finding, device);
        Require(!cause.empty() && !remedy.empty(), "a finding has a cause and a remedy");
        Require(finding.Count >= 1 && finding.Line <= inspection.Lines + inspection.LinesAfterEnd,
                "it counts something, on a line of the file");
    }
}

int LineCount(std::string_view text) {
    LineReader lines(text);
    while (!lines.AtEnd())
        lines.Next();
    return lines.Number();
}

void ReadAsHexFile(std::string_view text) {
    const DeviceRecord device{"device", static_cast<std::int16_t>(text.size() % 10), 1024, 64, 1};
    const HexInspection inspection = InspectHexText(text, device);
    const auto records = ReadHexRecords(text);
    Require(records.has_value() != inspection.Refusal.has_value(), "loader and inspection agree");
    if (!records) {
        const auto& [fault, finding] = *inspection.Refusal;
        Require(records.error() == HexFailure{fault, finding.Line, {}}, "and on the line");
        return;
    }
    MemoryImage image = BlankImage(device);
    CopyRecords(*records, image);
    Require(image == inspection.Image, "and on the image");
    CheckFindings(inspection, device);

    for (std::size_t cut = text.size() % 7; cut < text.size(); cut += 1 + text.size() / 64) {
        const auto part = ReadHexRecords(text.substr(0, cut));
        if (part)
            Require(part->size() == records->size(), "a cut file loads as the whole");
        else
            Require(part.error().Fault == HexFault::NoEndRecord ||
                        part.error().Line == LineCount(text.substr(0, cut)),
                    "a cut file that does not load says where it was cut");
    }
}

// The bits of `numbers`, over and over, say which fields are read as numbers.
void ReadAsFields(std::string_view text, unsigned numbers) {
    constexpr std::int32_t least = -1000;
    constexpr std::int32_t most = 70'000;
    FieldReader fields("file", text);
    for (std::size_t count = 0; !fields.Failure(); ++count) {
        Require(count <= text.size() + 1, "every field takes a character");
        if (numbers >> count % 7 & 1) {
            const std::int32_t number = fields.ReadNumber("number", least, most);
            Require(fields.Failure() ? number == 0 : number >= least && number <= most,
                    "numbers keep the range");
        } else {
            Require(fields.ReadText("text").find_first_of("\r\n") == std::string::npos,
                    "a field ends at its line's end");
        }
    }
    Require(fields.Failure()->Line >= 1 && fields.Failure()->Field >= 1,
            "a failure names a line and a field");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (data[0] % 2 == 0)
        ReadAsHexFile(text);
    else
        ReadAsFields(text, data[0] / 2u);
    return 0;
}
