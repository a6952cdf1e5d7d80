#include "cli/InspectText.hpp"

#include "cli/InspectContents.hpp"
#include "core/HexText.hpp"

namespace Tamber::Cli {
namespace {

using Lines = std::vector<std::string>;

std::string TypeName(int type) {
    constexpr const char* names[] = {"extended segment address", "start segment address",
                                     "extended linear address", "start linear address"};
    return names[type - 2];
}

void AddIgnored(Lines& lines, const HexInspection& inspection) {
    for (const HexIgnored& ignored : inspection.Ignored)
        lines.push_back("Line " + std::to_string(ignored.Line) + " is of type 0" +
                        std::to_string(ignored.Type) + " (" + TypeName(ignored.Type) + ", " +
                        HexWord(ignored.Value) + ") and ignored" +
                        (ignored.ShiftsAddresses
                             ? "; what follows is loaded at its own addresses all the same, where "
                               "it does not belong."
                             : "."));
}

void AddOverlaps(Lines& lines, const HexInspection& inspection) {
    for (const HexOverlap& overlap : inspection.Overlaps)
        lines.push_back("Line " + std::to_string(overlap.Line) + " stores byte address " +
                        RangeText(HexPlace::Outside, overlap.Range) + " again, after line " +
                        std::to_string(overlap.EarlierLine) +
                        (overlap.SameBytes ? "; the bytes are the same."
                                           : "; the bytes differ and the later ones count."));
}

void AddFindings(Lines& lines, const HexInspection& inspection) {
    for (const HexFinding& finding : inspection.Findings)
        lines.push_back("Line " + std::to_string(finding.Line) +
                        (finding.Column > 0 ? ", column " + std::to_string(finding.Column) : "") +
                        ": " + finding.Wrong + " " + finding.Remedy);
    if (inspection.FindingsTotal > HexInspection::FindingsMax)
        lines.push_back("... and " +
                        std::to_string(inspection.FindingsTotal - HexInspection::FindingsMax) +
                        " malformed lines more.");
}

}  // namespace

Lines InspectionLines(const HexInspection& inspection, const DeviceRecord& device) {
    Lines lines;
    lines.push_back(Count(inspection.Lines, "line") + ", " +
                    Count(inspection.DataRecords, "data record") + "; for " + device.Name + ":");
    const Lines contents = ContentsLines(inspection, device);
    lines.insert(lines.end(), contents.begin(), contents.end());
    AddIgnored(lines, inspection);
    if (!inspection.WordAddressed)
        AddOverlaps(lines, inspection);
    if (inspection.LinesBehindEnd > 0)
        lines.push_back(Count(inspection.LinesBehindEnd, "line") +
                        " behind the end record, which nobody reads.");
    AddFindings(lines, inspection);
    return lines;
}

}  // namespace Tamber::Cli
