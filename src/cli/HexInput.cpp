#include "cli/HexInput.hpp"

#include <fmt/format.h>

#include <array>

#include "core/TextFile.hpp"
#include "files/HexFile.hpp"
#include "files/HexInspect.hpp"

namespace Tamber::Cli {
namespace {

using TextResult = tl::expected<std::string, Failure>;

std::string Shown(const Context& context) {
    return context.Asked.File == "-" ? "standard input" : context.Asked.File;
}

TextResult ReadStream(std::istream& stream) {
    std::string text;
    std::array<char, 1 << 16> piece{};
    while (stream.read(piece.data(), piece.size()) || stream.gcount() > 0) {
        text.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
        if (text.size() > HexFileSizeMax)
            return Failed(ExitStatus::FileUnusable, "standard input: File too large");
    }
    return text;
}

Outcome Refused(const Context& context, const HexRefusal& refusal) {
    const std::string_view known = HexFailureText(refusal.Fault);
    return Failed(ExitStatus::FileUnusable,
                  (known.empty() ? "" : fmt::format("{}: {}\n", HexFailureTitle, known)) +
                      fmt::format("{} cannot be loaded.\n{}", Shown(context),
                                  HexFindingText(refusal.Finding)));
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
            return Failure{ExitStatus::FileUnusable, context.Asked.File + ": " + reason};
        });
}

Outcome LoadHexInput(Context& context) {
    const TextResult text = ReadHexText(context);
    if (!text)
        return tl::unexpected(text.error());
    const HexInspection inspection = InspectHexText(*text, context.Device());
    if (inspection.Refusal)
        return Refused(context, *inspection.Refusal);
    if (inspection.WordAddressed)
        return Failed(ExitStatus::FileUnusable,
                      Shown(context) +
                          " is word-addressed with swapped bytes (INHX16).\nHave the assembler "
                          "write INHX8M or INHX32.");
    context.Program.image = inspection.Image;
    if (HoldsMoreThanDevice(inspection))
        context.Screen.Note(Shown(context) + " holds words that " + context.Device().Name +
                            " has no place for; tamber-cli inspect lists them.");
    return {};
}

}  // namespace Tamber::Cli
