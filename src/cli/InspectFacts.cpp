#include "cli/InspectFacts.hpp"

#include <nlohmann/json.hpp>

#include "core/ImageSummary.hpp"

namespace Tamber::Cli {
namespace {

using Json = nlohmann::ordered_json;
using Kind = HexFindingKind;

// By HexPlace.
constexpr const char* PlaceNames[] = {"program-memory",
                                      "id-locations",
                                      "configuration-word",
                                      "behind-id-locations",
                                      "eeprom",
                                      "assembler-id-locations",
                                      "assembler-configuration-word",
                                      "outside"};

Json RangeFacts(const HexRange& range) {
    return {{"first", range.First}, {"last", range.Last}};
}

Json UseFacts(const HexUse& use) {
    Json ranges = Json::array();
    for (const HexRange& range : use.Ranges)
        ranges.push_back(RangeFacts(range));
    return {{"place", PlaceNames[static_cast<int>(use.Place)]},
            {"words", use.Words},
            {"bytes", ranges}};
}

Json IgnoredFacts(const HexFinding& finding) {
    return {{"line", finding.Line},
            {"type", IgnoredType(finding.Kind)},
            {"value", finding.Found},
            {"shiftsAddresses", finding.Severity == HexSeverity::Harmful}};
}

Json OverlapFacts(const HexFinding& finding) {
    return {{"line", finding.Line},
            {"earlierLine", finding.EarlierLine},
            {"bytes", RangeFacts(finding.Bytes)},
            {"same", finding.Severity == HexSeverity::Note}};
}

Json MalformedFacts(const HexFinding& finding) {
    const auto [wrong, remedy] = WordsOf(finding);
    return {
        {"line", finding.Line}, {"column", finding.Column}, {"wrong", wrong}, {"remedy", remedy}};
}

}  // namespace

Json InspectionFacts(const HexInspection& inspection, const DeviceRecord& device,
                     const DeviceFact& fact) {
    const MemoryImage& image = inspection.Image;
    Json facts{{"lines", inspection.Lines},
               {"dataRecords", inspection.DataRecords},
               {"linesBehindEnd", inspection.LinesAfterEnd},
               {"loadable", !inspection.Refusal},
               {"refusedAtLine", inspection.Refusal ? inspection.Refusal->Finding.Line : 0},
               {"wordAddressed", inspection.WordAddressed},
               {"places", Json::array()},
               {"outsideBlank", inspection.OutsideBlank},
               {"checksum", ProgramChecksum(image, device.ProgramWords)}};
    for (const HexUse& use : inspection.Uses)
        facts["places"].push_back(UseFacts(use));
    if (inspection.Use(HexPlace::ConfigurationWord))
        facts["configurationWord"] = image.Word(MemoryImage::ConfigurationWord);
    if (inspection.Use(HexPlace::AssemblerConfigurationWord))
        facts["assemblerConfigurationWord"] =
            image.Word(AssemblerConfigurationAddress(device, fact));

    const auto list = [&](const std::string& name, Kind first, Kind last, auto factsOf) {
        facts[name + "Total"] = inspection.Findings.Total(first, last);
        Json& entries = facts[name] = Json::array();
        for (const HexFinding& finding : inspection.Findings.Kept())
            if (finding.Kind >= first && finding.Kind <= last)
                entries.push_back(factsOf(finding));
    };
    list("ignored", Kind::ExtendedSegmentAddress, Kind::StartLinearAddress, IgnoredFacts);
    list("overlaps", Kind::Overlap, Kind::Overlap, OverlapFacts);
    list("malformed", Kind::EmptyLine, Kind::NoEndRecord, MalformedFacts);
    return facts;
}

}  // namespace Tamber::Cli
