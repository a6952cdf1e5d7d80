#include "cli/HexInput.hpp"

#include <fmt/format.h>

#include <array>
#include <nlohmann/json.hpp>

#include "cli/DeviceFindings.hpp"
#include "core/TextFile.hpp"
#include "files/HexFile.hpp"
#include "files/HexMove.hpp"

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

// Takes the file's words to the places of the image and says so.
void MoveWords(Context& context, const HexInspection& inspection) {
    if (context.Asked.AsIs)
        return;
    const DeviceRecord& device = context.Device();
    const DeviceFact& fact = context.Fact();
    const HexMove moved = MoveToImagePlaces(inspection, device, fact, context.Program.image);
    if (!moved.Any())
        return;
    nlohmann::ordered_json& facts = context.Facts["moved"];
    std::string text;
    if (moved.ConfigurationWord) {
        const int from = AssemblerConfigurationAddress(device, fact);
        facts["configurationWord"] = {{"value", *moved.ConfigurationWord}, {"from", from}};
        text = fmt::format("configuration word {:04X} is taken from byte address {:04X}",
                           *moved.ConfigurationWord, from);
    }
    if (moved.IdLocations > 0) {
        const int from = AssemblerIdAddress(device, fact);
        facts["idLocations"] = {{"words", moved.IdLocations}, {"from", from}};
        text += fmt::format("{}ID locations are taken from byte address {:04X}",
                            text.empty() ? "" : "; the ", from);
    }
    context.Screen.Note(fmt::format("{}: the {}.", Shown(context), text));
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
    const HexInspection inspection = InspectHexText(*text, context.Device(), context.Fact());
    if (inspection.Refusal)
        return Refused(context, *inspection.Refusal);
    context.Program.image = inspection.Image;
    MoveWords(context, inspection);
    const DeviceFindings findings = FindingsOf(context, inspection);
    for (const DeviceFinding& finding : findings)
        context.Screen.Warn(FindingLine(finding, context.Device()));
    if (AnyHarmful(findings) && !context.Asked.Force)
        return Failed(ExitStatus::FileNotForDevice,
                      fmt::format("{} is not for {}. --force takes it all the same.",
                                  Shown(context), context.Device().Name));
    return {};
}

}  // namespace Tamber::Cli
