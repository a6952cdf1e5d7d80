#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "cli/Commands.hpp"
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

// A data record that holds `count` bytes of the image as if they stood at `address`.
std::string RecordFor(const MemoryImage& image, int from, int count, int address) {
    std::string record = fmt::format(":{:02X}{:04X}00", count, address);
    int sum = count + (address >> 8) + (address & 0xFF);
    for (const std::uint8_t byte : image.Bytes(from, count)) {
        AppendHexByte(record, byte);
        sum += byte;
    }
    return record + fmt::format("{:02X}", -sum & 0xFF);
}

// What assemblers for 12-bit devices put where the image does not keep it.
void AddAssemblersPlaces(Lines& lines, const HexInspection& inspection,
                         const DeviceRecord& device) {
    constexpr int from = AssemblerConfigurationAddress;
    const MemoryImage& image = inspection.Image;
    const int idFrom = AssemblerIdAddress(device);
    const bool word = inspection.Use(HexPlace::AssemblerConfigurationWord);
    const bool ids = inspection.Use(HexPlace::AssemblerIdLocations);
    if (word)
        lines.push_back(fmt::format(
            "The configuration word {:02X}{:02X} stands at byte address "
            "{:04X}; the image keeps it at {:04X}.",
            image.Byte(from + 1), image.Byte(from), from, MemoryImage::ConfigurationWord));
    if (ids)
        lines.push_back(
            fmt::format("The ID locations stand at byte address {:04X}; the image "
                        "keeps them at {:04X}.",
                        idFrom, MemoryImage::IdLocations));
    if (!word && !ids)
        return;
    lines.push_back("Assemblers put them there for 12-bit devices. They are not programmed from");
    lines.push_back("there; to have them programmed, add in front of the file's end record:");
    if (ids)
        lines.push_back("  " + RecordFor(image, idFrom, 8, MemoryImage::IdLocations));
    if (word)
        lines.push_back("  " + RecordFor(image, from, 2, MemoryImage::ConfigurationWord));
}

void AddContents(Lines& lines, const HexInspection& inspection, const DeviceRecord& device) {
    if (inspection.WordAddressed) {
        lines.push_back("The file is word-addressed with swapped bytes (INHX16). Loaded as it is,");
        lines.push_back("its words would be wrong and in the wrong places. Have the assembler");
        lines.push_back("write INHX8M or INHX32.");
        return;
    }
    for (const HexUse& use : inspection.Uses)
        if (std::string text = UseText(inspection, use); !text.empty())
            lines.push_back(std::move(text));
    lines.push_back(fmt::format("  {:<25} {:04X} (as the program-memory view shows it)", "checksum",
                                ProgramChecksum(inspection.Image, device.ProgramWords)));
    AddAssemblersPlaces(lines, inspection, device);
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

}  // namespace

Outcome InspectFile(Context& context) {
    const auto text = ReadHexText(context);
    if (!text)
        return tl::unexpected(text.error());
    const DeviceRecord& device = context.Device();
    const HexInspection inspection = InspectHexText(*text, device);
    context.Facts["inspection"] = InspectionFacts(inspection, device);

    Lines lines{fmt::format("{}, {}; for {}:", Count(inspection.Lines, "line"),
                            Count(inspection.DataRecords, "data record"), device.Name)};
    AddContents(lines, inspection, device);
    AddFindings(lines, inspection);
    for (const std::string& line : lines)
        context.Screen.Asked(line);
    if (inspection.Refusal)
        return Failed(ExitStatus::FileUnusable,
                      fmt::format("The file cannot be loaded; line {} is the first to be refused.",
                                  inspection.Refusal->Finding.Line));
    if (inspection.WordAddressed)
        return Failed(ExitStatus::FileUnusable, "The file must not be loaded as it is.");
    return {};
}

}  // namespace Tamber::Cli
