#include "cli/HexInput.hpp"

#include <array>

#include "core/TextFile.hpp"
#include "files/HexFailure.hpp"
#include "files/HexInspect.hpp"

namespace Tamber::Cli {
namespace {

using TextResult = tl::expected<std::string, Outcome>;

std::string Shown(const Context& context) {
    return context.Asked.File == "-" ? "standard input" : context.Asked.File;
}

TextResult ReadStream(std::istream& stream) {
    std::string text;
    std::array<char, 1 << 16> piece{};
    while (stream.read(piece.data(), piece.size()) || stream.gcount() > 0) {
        text.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
        if (text.size() > HexFileSizeMax)
            return tl::unexpected(
                Failed(ExitStatus::FileUnusable, "standard input: File too large"));
    }
    return text;
}

// The line that the loader refuses, in words.
std::string Culprit(const HexInspection& inspection) {
    for (const HexFinding& finding : inspection.Findings)
        if (finding.Line == inspection.Refusal->Line)
            return "Line " + std::to_string(finding.Line) + ", column " +
                   std::to_string(finding.Column) + ": " + finding.Wrong + " " + finding.Remedy;
    return "Line " + std::to_string(inspection.Refusal->Line) + " cannot be read.";
}

Outcome Refusal(const Context& context, const HexInspection& inspection) {
    std::string text = Shown(context) + " cannot be loaded.";
    if (const auto known = HexFailureText(inspection.Refusal->Fault); !known.empty())
        text = std::string(HexFailureTitle) + ": " + std::string(known) + "\n" + text;
    return Failed(ExitStatus::FileUnusable, text + "\n" + Culprit(inspection));
}

bool HoldsMoreThanDevice(const HexInspection& inspection) {
    return !inspection.OutsideBlank || inspection.Use(HexPlace::AssemblerIdLocations) ||
           inspection.Use(HexPlace::AssemblerConfigurationWord);
}

}  // namespace

TextResult ReadHexText(Context& context) {
    if (context.Asked.File == "-")
        return ReadStream(context.Screen.In());
    return ReadTextFile(context.Asked.File, HexFileSizeMax)
        .map_error([&](const std::string& reason) {
            return Failed(ExitStatus::FileUnusable, context.Asked.File + ": " + reason);
        });
}

void BlankImage(Context& context) {
    MemoryImage& image = context.Program.image;
    image.ClearConfiguration();
    image.ClearEeprom();
    image.ClearProgramMemory(context.Device().TypeCode);
}

Outcome LoadHexInput(Context& context) {
    const TextResult text = ReadHexText(context);
    if (!text)
        return text.error();
    const HexInspection inspection = InspectHexText(*text, context.Device());
    const auto records = ReadHexRecords(*text);
    if (!records)
        return Refusal(context, inspection);
    if (inspection.WordAddressed)
        return Failed(ExitStatus::FileUnusable,
                      Shown(context) +
                          " is word-addressed with swapped bytes (INHX16).\nHave the assembler "
                          "write INHX8M or INHX32.");
    BlankImage(context);
    CopyRecords(*records, context.Program.image);
    if (HoldsMoreThanDevice(inspection))
        context.Screen.Note(Shown(context) + " holds words that " + context.Device().Name +
                            " has no place for; tamber-cli inspect tells which.");
    return {};
}

}  // namespace Tamber::Cli
