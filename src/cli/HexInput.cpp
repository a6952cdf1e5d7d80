#include "cli/HexInput.hpp"

#include <array>

#include "core/TextFile.hpp"
#include "files/HexFailure.hpp"
#include "files/HexInspect.hpp"

namespace Tamber::Cli {
namespace {

using TextResult = Result<std::string, Outcome>;

std::string Shown(const Context& context) {
    return context.Asked.File == "-" ? "standard input" : context.Asked.File;
}

TextResult ReadStream(std::istream& stream) {
    std::string text;
    std::array<char, 1 << 16> piece{};
    while (stream.read(piece.data(), piece.size()) || stream.gcount() > 0) {
        text.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
        if (text.size() > HexFileSizeMax)
            return TextResult::Failed(
                Failed(ExitStatus::FileUnusable, "standard input: File too large"));
    }
    return TextResult::Success(std::move(text));
}

// The line that the loader refuses, in words.
std::string Culprit(const HexInspection& inspection) {
    for (const HexFinding& finding : inspection.Findings)
        if (finding.Line == inspection.Load.Line)
            return "Line " + std::to_string(finding.Line) + ", column " +
                   std::to_string(finding.Column) + ": " + finding.Wrong + " " + finding.Remedy;
    return "Line " + std::to_string(inspection.Load.Line) + " cannot be read.";
}

Outcome Refusal(const Context& context, const HexInspection& inspection) {
    std::string text = Shown(context) + " cannot be loaded.";
    if (const auto known = HexFailureText(inspection.Load.Outcome); !known.empty())
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
    auto text = ReadTextFile(context.Asked.File, HexFileSizeMax);
    if (!text.Ok())
        return TextResult::Failed(
            Failed(ExitStatus::FileUnusable, context.Asked.File + ": " + text.Failure()));
    return TextResult::Success(std::move(text.Value()));
}

void BlankImage(Context& context) {
    MemoryImage& image = context.Program.image;
    image.ClearConfiguration();
    image.ClearEeprom();
    image.ClearProgramMemory(context.Device().TypeCode);
}

Outcome LoadHexInput(Context& context) {
    const TextResult text = ReadHexText(context);
    if (!text.Ok())
        return text.Failure();
    const HexInspection inspection = InspectHexText(text.Value(), context.Device());
    HexRecordTable table;
    if (ReadHexRecords(text.Value(), table).Outcome != HexOutcome::Loaded)
        return Refusal(context, inspection);
    if (inspection.WordAddressed)
        return Failed(ExitStatus::FileUnusable,
                      Shown(context) +
                          " is word-addressed with swapped bytes (INHX16).\nHave the assembler "
                          "write INHX8M or INHX32.");
    BlankImage(context);
    CopyRecords(table, context.Program.image);
    if (HoldsMoreThanDevice(inspection))
        context.Screen.Note(Shown(context) + " holds words that " + context.Device().Name +
                            " has no place for; tamber-cli inspect tells which.");
    return {};
}

}  // namespace Tamber::Cli
