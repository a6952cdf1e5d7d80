#include "cli/DeviceFindings.hpp"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

namespace Tamber::Cli {
namespace {

using Json = nlohmann::ordered_json;

// By DeviceFindingKind.
constexpr const char* KindNames[] = {"word-addressed",
                                     "moved-data",
                                     "names-other-device",
                                     "wide-words",
                                     "beyond-program-memory",
                                     "beyond-eeprom",
                                     "beyond-regions",
                                     "given-twice",
                                     "two-places",
                                     "names-sibling",
                                     "same-in-two-places",
                                     "elsewhere-in-file",
                                     "no-configuration-word",
                                     "unimplemented-bits",
                                     "no-calibration-word",
                                     "second-configuration-word",
                                     "start-record",
                                     "lines-after-end"};

const char* SeverityName(DeviceFindingKind kind) {
    return SeverityOf(kind) == HexSeverity::Harmful ? "harmful" : "note";
}

Json FactsOf(const DeviceFinding& finding, const DeviceRecord& device) {
    const auto [cause, remedy] = WordsOf(finding, device);
    Json facts{{"severity", SeverityName(finding.Kind)},
               {"kind", KindNames[static_cast<int>(finding.Kind)]},
               {"count", finding.Count}};
    if (finding.Line > 0)
        facts["line"] = finding.Line;
    if (finding.Column > 0)
        facts["column"] = finding.Column;
    if (finding.Address >= 0) {
        facts["byteAddress"] = finding.Address;
        facts["wordAddress"] = finding.Address / 2;
    }
    if (!finding.Named.empty())
        facts["names"] = finding.Named;
    if (!finding.Better.empty())
        facts["better"] = finding.Better;
    facts["cause"] = cause;
    facts["remedy"] = remedy;
    return facts;
}

bool Matters(const Context& context, const DeviceFinding& finding) {
    const auto& only = context.Asked.Only;
    const DeviceFact& fact = context.Fact();
    switch (finding.Kind) {
        case DeviceFindingKind::NoConfigurationWord:
            return !only || only->ConfigurationWord || only->IdLocations;
        case DeviceFindingKind::NoCalibrationWord:
            return !only || only->ProgramMemory;
        case DeviceFindingKind::ElsewhereInFile:
            return context.Asked.AsIs ||
                   !(finding.OtherAddress == MemoryImage::ConfigurationWord ? fact.FileConfiguration
                                                                            : fact.FileIds);
        default:
            return true;
    }
}

}  // namespace

DeviceFindings FindingsOf(Context& context, const HexInspection& inspection) {
    const modFunc& program = context.Program;
    DeviceFindings findings = CheckForDevice(inspection, context.Device(), program.facts,
                                             program.catalogue, program.settings.DeviceCount);
    std::erase_if(findings,
                  [&](const DeviceFinding& finding) { return !Matters(context, finding); });
    Json& list = context.Facts["findings"] = Json::array();
    for (const DeviceFinding& finding : findings)
        list.push_back(FactsOf(finding, context.Device()));
    return findings;
}

std::string FindingLine(const DeviceFinding& finding, const DeviceRecord& device) {
    const auto [cause, remedy] = WordsOf(finding, device);
    const std::string option =
        finding.Better.empty() ? "" : fmt::format(" (--device {})", finding.Better);
    return fmt::format("{}: {} {}{}", SeverityName(finding.Kind), cause, remedy, option);
}

}  // namespace Tamber::Cli
