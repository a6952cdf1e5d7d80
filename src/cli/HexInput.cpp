#include "cli/HexInput.hpp"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <nlohmann/json.hpp>
#include <system_error>

#include "cli/DescriptorInput.hpp"
#include "cli/DeviceFindings.hpp"
#include "core/TextFile.hpp"
#include "core/Utf8.hpp"
#include "files/HexFile.hpp"
#include "files/HexMove.hpp"

namespace Tamber::Cli {
namespace {

using TextResult = tl::expected<std::string, Failure>;

std::string Shown(const Context& context) {
    return context.Asked.File == "-" ? "standard input" : VisibleText(context.Asked.File);
}

Failure Unusable(const Context& context, const std::string& reason) {
    return {ExitStatus::FileUnusable, Shown(context) + ": " + reason};
}

TextResult ReadStream(Context& context, std::istream& stream) {
    std::string text;
    std::size_t ends = 0;
    std::array<char, 1 << 16> piece{};
    while (ends < HexLineEndsMax &&
           (stream.read(piece.data(), piece.size()) || stream.gcount() > 0)) {
        const std::string_view read(piece.data(), static_cast<std::size_t>(stream.gcount()));
        text.append(read);
        ends += CountLineEnds(read);
        if (text.size() > HexFileSizeMax)
            return tl::unexpected(Unusable(context, "File too large"));
    }
    if (context.Host.Interrupted())
        return Failed(ExitStatus::Interrupted);
    return text;
}

// A pipe with a name, as a shell makes it for a command whose output is to be read as a file. It is
// opened without waiting for the one who is to write into it.
TextResult ReadPipe(Context& context) {
    const int pipe = open(context.Asked.File.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (pipe < 0)
        return tl::unexpected(Unusable(context, std::generic_category().message(errno)));
    DescriptorInput input(pipe, context.Host);
    std::istream stream(&input);
    TextResult text = ReadStream(context, stream);
    close(pipe);
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
    const std::string& file = context.Asked.File;
    if (file == "-")
        return ReadStream(context, context.Screen.In());
    std::error_code ignored;
    if (std::filesystem::is_fifo(file, ignored))
        return ReadPipe(context);
    return ReadTextFile(file, HexFileSizeMax, HexLineEndsMax)
        .map_error([&](const std::string& reason) { return Unusable(context, reason); });
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
