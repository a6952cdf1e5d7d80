#include <nlohmann/json.hpp>

#include "cli/InspectText.hpp"
#include "core/ImageSummary.hpp"

namespace Tamber::Cli {
namespace {

using Json = nlohmann::ordered_json;

const char* PlaceName(HexPlace place) {
    switch (place) {
        case HexPlace::ProgramMemory:
            return "program-memory";
        case HexPlace::IdLocations:
            return "id-locations";
        case HexPlace::ConfigurationWord:
            return "configuration-word";
        case HexPlace::BetweenIdAndConfiguration:
            return "behind-id-locations";
        case HexPlace::Eeprom:
            return "eeprom";
        case HexPlace::AssemblerIdLocations:
            return "assembler-id-locations";
        case HexPlace::AssemblerConfigurationWord:
            return "assembler-configuration-word";
        default:
            return "outside";
    }
}

Json RangeFacts(const HexRange& range) {
    return {{"first", range.First}, {"last", range.Last}};
}

Json UseFacts(const HexUse& use) {
    Json facts{{"place", PlaceName(use.Place)}, {"words", use.Words}, {"bytes", Json::array()}};
    for (const HexRange& range : use.Ranges)
        facts["bytes"].push_back(RangeFacts(range));
    return facts;
}

int WordAt(const MemoryImage& image, int address) {
    return image.Byte(address + 1) << 8 | image.Byte(address);
}

template <typename Entry, typename Form>
Json List(const std::vector<Entry>& entries, Form form) {
    Json list = Json::array();
    for (const Entry& entry : entries)
        list.push_back(form(entry));
    return list;
}

}  // namespace

Json InspectionFacts(const HexInspection& inspection, const DeviceRecord& device) {
    Json facts{{"lines", inspection.Lines},
               {"dataRecords", inspection.DataRecords},
               {"linesBehindEnd", inspection.LinesBehindEnd},
               {"loadable", !inspection.Refusal},
               {"refusedAtLine", inspection.Refusal ? inspection.Refusal->Line : 0},
               {"wordAddressed", inspection.WordAddressed}};
    facts["places"] = List(inspection.Uses, UseFacts);
    facts["outsideBlank"] = inspection.OutsideBlank;
    facts["checksum"] = ProgramChecksum(inspection.Image, device.ProgramWords);
    if (inspection.Use(HexPlace::ConfigurationWord))
        facts["configurationWord"] = WordAt(inspection.Image, MemoryImage::ConfigurationWord);
    if (inspection.Use(HexPlace::AssemblerConfigurationWord))
        facts["assemblerConfigurationWord"] =
            WordAt(inspection.Image, AssemblerConfigurationAddress);
    facts["ignored"] = List(inspection.Ignored, [](const HexIgnored& ignored) {
        return Json{{"line", ignored.Line},
                    {"type", ignored.Type},
                    {"value", ignored.Value},
                    {"shiftsAddresses", ignored.ShiftsAddresses}};
    });
    facts["overlaps"] = List(inspection.Overlaps, [](const HexOverlap& overlap) {
        return Json{{"line", overlap.Line},
                    {"earlierLine", overlap.EarlierLine},
                    {"bytes", RangeFacts(overlap.Range)},
                    {"same", overlap.SameBytes}};
    });
    facts["malformedTotal"] = inspection.FindingsTotal;
    facts["malformed"] = List(inspection.Findings, [](const HexFinding& finding) {
        return Json{{"line", finding.Line},
                    {"column", finding.Column},
                    {"wrong", finding.Wrong},
                    {"remedy", finding.Remedy}};
    });
    return facts;
}

}  // namespace Tamber::Cli
