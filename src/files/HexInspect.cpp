#include "files/HexInspect.hpp"

#include <algorithm>
#include <utility>

#include "files/HexContent.hpp"
#include "files/HexWordAddressed.hpp"
#include "files/LineReader.hpp"

namespace Tamber {
namespace {

constexpr int FirstIgnoredType = 2;
constexpr int LastIgnoredType = 5;
constexpr int Places = static_cast<int>(HexPlace::Outside) + 1;

struct NumberedRecord {
    HexRecord Record;
    int Line = 0;
};

// The lines up to the end record, and what is readable of them.
struct Lines {
    std::vector<std::string_view> Texts;
    std::vector<NumberedRecord> Records;
};

Lines TakeApart(std::string_view text, HexInspection& inspection) {
    Lines lines;
    LineReader reader(text);
    bool ended = false;
    while (!reader.AtEnd()) {
        const std::string_view line = reader.Next();
        if (ended) {
            ++inspection.LinesBehindEnd;
            continue;
        }
        lines.Texts.push_back(line);
        const bool cut = reader.Unfinished() && line.size() < HexRecord::TypeEnd;
        HexRecord record;
        if (cut || !ParseHexRecord(line, record))
            continue;
        lines.Records.push_back({record, static_cast<int>(lines.Texts.size())});
        ended = record.Type == HexRecord::EndType;
    }
    inspection.Lines = static_cast<int>(lines.Texts.size());
    return lines;
}

bool Readable(const HexRecord& record) {
    return record.Type == HexRecord::DataType && record.ChecksumGood &&
           record.ByteCount <= HexRecord::DataMax;
}

HexUnit UnitOf(const Lines& lines) {
    std::vector<HexRecord> data;
    for (const auto& [record, number] : lines.Records)
        if (Readable(record))
            data.push_back(record);
    return UnitOfRecords(data);
}

void AddFinding(HexInspection& inspection, HexFinding finding, int line) {
    finding.Line = line;
    if (++inspection.FindingsTotal <= HexInspection::FindingsMax)
        inspection.Findings.push_back(std::move(finding));
}

void CheckLines(const Lines& lines, HexUnit unit, HexInspection& inspection) {
    for (std::size_t index = 0; index < lines.Texts.size(); ++index)
        if (auto finding = CheckHexLine(lines.Texts[index], unit == HexUnit::Words))
            AddFinding(inspection, std::move(*finding), static_cast<int>(index) + 1);
    if (inspection.Refusal && inspection.Refusal->Fault == HexFault::TooManyLines)
        AddFinding(inspection,
                   {0, 0, "The file has more than " + std::to_string(HexRecordTableMax) + " lines.",
                    "Have it written with longer records; 16 bytes a record is common."},
                   HexRecordTableMax + 1);
    const bool ended =
        !lines.Records.empty() && lines.Records.back().Record.Type == HexRecord::EndType;
    if (!ended)
        AddFinding(inspection,
                   {0, 0, "The file has no end record.",
                    "It may have been cut off; have it made or copied again. The last line of a "
                    "whole file is :00000001FF."},
                   static_cast<int>(lines.Texts.size()) + 1);
}

HexIgnored Ignored(const HexRecord& record, int line) {
    HexIgnored ignored{line, record.Type, 0, false};
    for (int index = 0; index < std::min<int>(record.ByteCount, 4); ++index)
        ignored.Value = ignored.Value << 8 | record.Data[static_cast<std::size_t>(index)];
    ignored.ShiftsAddresses = record.Type % 2 == 0 && ignored.Value != 0;
    return ignored;
}

MemoryImage BlankImage(const DeviceRecord& device) {
    MemoryImage image;
    image.ClearProgramMemory(device.TypeCode);
    image.ClearEeprom();
    image.ClearConfiguration();
    return image;
}

bool Blank(const MemoryImage& image, const HexUse& use, const MemoryImage& blank) {
    for (const HexRange& range : use.Ranges)
        for (int address = range.First; address <= range.Last; ++address)
            if (image.Byte(address) != blank.Byte(address) && image.Byte(address) != 0xFF)
                return false;
    return true;
}

}  // namespace

const HexUse* HexInspection::Use(HexPlace place) const {
    const auto found = std::ranges::find(Uses, place, &HexUse::Place);
    return found == Uses.end() ? nullptr : &*found;
}

HexInspection InspectHexText(std::string_view text, const DeviceRecord& device) {
    HexInspection inspection;
    inspection.Image = BlankImage(device);
    if (const auto records = ReadHexRecords(text); !records)
        inspection.Refusal = records.error();

    const Lines lines = TakeApart(text, inspection);
    const HexUnit unit = UnitOf(lines);
    inspection.WordAddressed = unit != HexUnit::Bytes;
    CheckLines(lines, unit, inspection);

    HexContent content(inspection);
    for (const auto& [record, line] : lines.Records) {
        if (Readable(record)) {
            ++inspection.DataRecords;
            content.Store(record, line);
        } else if (record.Type >= FirstIgnoredType && record.Type <= LastIgnoredType) {
            inspection.Ignored.push_back(Ignored(record, line));
        }
    }
    const HexPlaceMap map(device);
    for (int place = 0; place < Places; ++place)
        if (HexUse use = content.UseOf(static_cast<HexPlace>(place), map); use.Words > 0)
            inspection.Uses.push_back(std::move(use));
    if (const HexUse* outside = inspection.Use(HexPlace::Outside))
        inspection.OutsideBlank = Blank(inspection.Image, *outside, BlankImage(device));
    return inspection;
}

}  // namespace Tamber
