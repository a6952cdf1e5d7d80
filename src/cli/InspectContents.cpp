#include "cli/InspectContents.hpp"

#include <algorithm>

#include "core/HexText.hpp"
#include "core/ImageSummary.hpp"

namespace Tamber::Cli {
namespace {

using Lines = std::vector<std::string>;

constexpr std::size_t NameWidth = 28;

std::string Hex(int value) {
    return HexWord(static_cast<std::uint32_t>(value));
}

std::string Row(std::string name, const std::string& value) {
    name.insert(0, 2, ' ');
    name.resize(std::max(NameWidth, name.size() + 1), ' ');
    return name + value;
}

std::string RangesText(const HexUse& use) {
    std::string text;
    for (const HexRange& range : use.Ranges)
        text += (text.empty() ? "" : ", ") + RangeText(use.Place, range);
    return text;
}

std::string WordText(const MemoryImage& image, int address) {
    return HexByte(image.Byte(address + 1)) + HexByte(image.Byte(address));
}

void AddUse(Lines& lines, const HexInspection& inspection, const HexUse& use) {
    switch (use.Place) {
        case HexPlace::ProgramMemory:
            lines.push_back(
                Row("program memory", Count(use.Words, "word") + " at " + RangesText(use)));
            break;
        case HexPlace::IdLocations:
            lines.push_back(Row("ID locations", IdLocationsText(inspection.Image) +
                                                    " (low bytes, of " + Count(use.Words, "word") +
                                                    ")"));
            break;
        case HexPlace::ConfigurationWord:
            lines.push_back(Row("configuration word", ConfigurationWordText(inspection.Image)));
            break;
        case HexPlace::BetweenIdAndConfiguration:
            lines.push_back(Row("behind the ID locations",
                                Count(use.Words, "word") + " at byte address " + RangesText(use) +
                                    ", sent along when ID or configuration is programmed"));
            break;
        case HexPlace::Eeprom:
            lines.push_back(Row("EEPROM", Count(use.Words, "byte") + " at " + RangesText(use)));
            break;
        case HexPlace::Outside:
            lines.push_back(
                Row("outside the device",
                    Count(use.Words, "word") + " at byte address " + RangesText(use) +
                        (inspection.OutsideBlank ? ", all of them blank" : ", never programmed")));
            break;
        default:
            break;
    }
}

// A data record that holds `count` bytes of the image as if they stood at `address`.
std::string RecordFor(const MemoryImage& image, int from, int count, int address) {
    std::string digits = HexByte(static_cast<std::uint8_t>(count)) + Hex(address) + "00";
    int sum = count + (address >> 8) + (address & 0xFF);
    for (const std::uint8_t byte : image.Bytes(from, count)) {
        AppendHexByte(digits, byte);
        sum += byte;
    }
    return ":" + digits + HexByte(static_cast<std::uint8_t>(-sum & 0xFF));
}

// What assemblers for 12-bit devices put where the image does not keep it.
void AddAssemblersPlaces(Lines& lines, const HexInspection& inspection,
                         const DeviceRecord& device) {
    const bool word = inspection.Use(HexPlace::AssemblerConfigurationWord);
    const bool ids = inspection.Use(HexPlace::AssemblerIdLocations);
    const int idAddress = AssemblerIdAddress(device);
    if (word)
        lines.push_back("The configuration word " +
                        WordText(inspection.Image, AssemblerConfigurationAddress) +
                        " stands at byte address " + Hex(AssemblerConfigurationAddress) +
                        "; the image keeps it at " + Hex(MemoryImage::ConfigurationWord) + ".");
    if (ids)
        lines.push_back("The ID locations stand at byte address " + Hex(idAddress) +
                        "; the image keeps them at " + Hex(MemoryImage::IdLocations) + ".");
    if (!word && !ids)
        return;
    lines.push_back("Assemblers put them there for 12-bit devices. They are not programmed from");
    lines.push_back("there; to have them programmed, add in front of the file's end record:");
    if (ids)
        lines.push_back("  " + RecordFor(inspection.Image, idAddress, 8, MemoryImage::IdLocations));
    if (word)
        lines.push_back("  " + RecordFor(inspection.Image, AssemblerConfigurationAddress, 2,
                                         MemoryImage::ConfigurationWord));
}

}  // namespace

std::string RangeText(HexPlace place, const HexRange& range) {
    int first = range.First;
    int last = range.Last;
    if (place == HexPlace::Eeprom) {
        first -= MemoryImage::Eeprom;
        last -= MemoryImage::Eeprom;
    }
    if (place == HexPlace::Eeprom || place == HexPlace::ProgramMemory) {
        first /= 2;
        last /= 2;
    }
    std::string text = Hex(first);
    if (last != first)
        text.append("-").append(Hex(last));
    return text;
}

std::string Count(int count, const char* one) {
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

Lines ContentsLines(const HexInspection& inspection, const DeviceRecord& device) {
    Lines lines;
    if (inspection.WordAddressed) {
        lines.push_back("The file is word-addressed with swapped bytes (INHX16). Loaded as it is,");
        lines.push_back("its words would be wrong and in the wrong places. Have the assembler");
        lines.push_back("write INHX8M or INHX32.");
        return lines;
    }
    for (const HexUse& use : inspection.Uses)
        AddUse(lines, inspection, use);
    lines.push_back(Row(
        "checksum", Hex(static_cast<int>(ProgramChecksum(inspection.Image, device.ProgramWords))) +
                        " (as the program-memory view shows it)"));
    AddAssemblersPlaces(lines, inspection, device);
    return lines;
}

}  // namespace Tamber::Cli
