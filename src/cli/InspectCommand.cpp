#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "cli/Commands.hpp"
#include "cli/DeviceFindings.hpp"
#include "cli/HexInput.hpp"
#include "cli/InspectFacts.hpp"
#include "core/HexText.hpp"
#include "core/ImageSummary.hpp"

namespace Tamber::Cli {
namespace {

using Lines = std::vector<std::string>;

std::string Count(int count, const char* one) {
    return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

// The addresses of a use as a reader knows them: words of program memory, numbers of EEPROM bytes,
// else byte addresses.
std::string RangesText(const HexUse& use) {
    const bool words = use.Place == HexPlace::ProgramMemory || use.Place == HexPlace::Eeprom;
    const int begin = use.Place == HexPlace::Eeprom ? MemoryImage::Eeprom : 0;
    const int unit = words ? 2 : 1;
    std::string text;
    for (const auto& [first, last] : use.Ranges)
        text += (text.empty() ? "" : ", ") +
                HexRangeText({(first - begin) / unit, (last - begin) / unit});
    return text;
}

std::string UseText(const HexInspection& inspection, const HexUse& use) {
    const std::string words = Count(use.Words, "word");
    const std::string ranges = RangesText(use);
    const auto row = [](const char* name, const std::string& value) {
        return fmt::format("  {:<25} {}", name, value);
    };
    switch (use.Place) {
        case HexPlace::ProgramMemory:
            return row("program memory", words + " at " + ranges);
        case HexPlace::IdLocations:
            return row("ID locations", fmt::format("{} (low bytes, of {})",
                                                   IdLocationsText(inspection.Image), words));
        case HexPlace::ConfigurationWord:
            return row("configuration word", ConfigurationWordText(inspection.Image));
        case HexPlace::BetweenIdAndConfiguration:
            return row("after the ID locations",
                       words + " at byte address " + ranges +
                           ", sent along when ID or configuration is programmed");
        case HexPlace::Eeprom:
            return row("EEPROM", Count(use.Words, "byte") + " at " + ranges);
        case HexPlace::Outside:
            return row("outside the device", words + " at byte address " + ranges +
                                                 (inspection.OutsideBlank ? ", all of them blank"
                                                                          : ", never programmed"));
        default:
            return {};
    }
}

// What assemblers for 12-bit devices put where the image does not keep it.
void AddAssemblersPlaces(Lines& lines, const HexInspection& inspection, const DeviceRecord& device,
                         const DeviceFact& fact) {
    const bool word = inspection.Use(HexPlace::AssemblerConfigurationWord);
    const bool ids = inspection.Use(HexPlace::AssemblerIdLocations);
    if (const int from = AssemblerConfigurationAddress(device, fact); word)
        lines.push_back(fmt::format(
            "The configuration word {:04X} stands at byte address {:04X}; the image keeps it at "
            "{:04X}.",
            inspection.Word(from), from, MemoryImage::ConfigurationWord));
    if (ids)
        lines.push_back(
            fmt::format("The ID locations stand at byte address {:04X}; the image keeps them at "
                        "{:04X}.",
                        AssemblerIdAddress(device, fact), MemoryImage::IdLocations));
    if ((word && fact.FileConfiguration) || (ids && fact.FileIds))
        lines.push_back(
            "Assemblers put them there for this device. They are moved before they are used.");
}

void AddContents(Lines& lines, const HexInspection& inspection, const DeviceRecord& device,
                 const DeviceFact& fact) {
    if (inspection.WordAddressed)  // no word is what it seems to be, nor where
        return;
    for (const HexUse& use : inspection.Uses)
        if (std::string text = UseText(inspection, use); !text.empty())
            lines.push_back(std::move(text));
    lines.push_back(fmt::format("  {:<25} {:04X} (as the program-memory view shows it)", "checksum",
                                ProgramChecksum(inspection.Image, device.ProgramWords)));
    AddAssemblersPlaces(lines, inspection, device, fact);
}

void AddFindings(Lines& lines, const HexInspection& inspection) {
    const auto& findings = inspection.Findings.Kept();
    for (const HexFinding& finding : findings)
        // The addresses of overlaps are wrong where addresses count words.
        if (!inspection.WordAddressed || finding.Kind != HexFindingKind::Overlap)
            lines.push_back(HexFindingText(finding));
    const int more = inspection.Findings.Total() - static_cast<int>(findings.size());
    if (more > 0)
        lines.push_back(fmt::format("... and {} more of the same kinds.", more));
}

// What the file shows against the device, but for what has been said already.
void AddDeviceFindings(Lines& lines, const DeviceFindings& findings, const DeviceRecord& device) {
    for (const DeviceFinding& finding : findings)
        if (finding.Kind < DeviceFindingKind::StartRecord)
            lines.push_back(FindingLine(finding, device));
}

bool AnyMalformed(const HexInspection& inspection) {
    return inspection.Findings.Total(HexFindingKind::EmptyLine, HexFindingKind::NoEndRecord) > 0;
}

// How an inspection ends.
Outcome Judge(const Context& context, const HexInspection& inspection,
              const DeviceFindings& findings) {
    if (inspection.Refusal)
        return Failed(ExitStatus::FileUnusable,
                      fmt::format("The file cannot be loaded; line {} is the first to be refused.",
                                  inspection.Refusal->Finding.Line));
    const bool strict = context.Asked.Strict;
    if (strict && AnyMalformed(inspection))
        return Failed(ExitStatus::FileUnusable, "The file is malformed.");
    if (inspection.WordAddressed || (strict && AnyHarmful(findings)))
        return Failed(ExitStatus::FileNotForDevice,
                      fmt::format("The file is not for {}.", context.Device().Name));
    return {};
}

}  // namespace

Outcome InspectFile(Context& context) {
    const auto text = ReadHexText(context);
    if (!text)
        return tl::unexpected(text.error());
    const DeviceRecord& device = context.Device();
    const DeviceFact& fact = context.Fact();
    const HexInspection inspection = InspectHexText(*text, device, fact);
    context.Facts["inspection"] = InspectionFacts(inspection, device, fact);
    const DeviceFindings findings =
        inspection.Refusal ? DeviceFindings() : FindingsOf(context, inspection);

    Lines lines{fmt::format("{}, {}; for {}:", Count(inspection.Lines, "line"),
                            Count(inspection.DataRecords, "data record"), device.Name)};
    AddContents(lines, inspection, device, fact);
    AddFindings(lines, inspection);
    AddDeviceFindings(lines, findings, device);
    for (const std::string& line : lines)
        context.Screen.Asked(line);
    return Judge(context, inspection, findings);
}

}  // namespace Tamber::Cli
