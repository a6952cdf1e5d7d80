#include "files/HexInspect.hpp"

#include <algorithm>
#include <utility>

#include "files/HexWordAddressed.hpp"
#include "files/LineReader.hpp"

namespace Tamber {
namespace {

constexpr int IdBytes = 8;
constexpr int FirstIgnoredType = 2;
constexpr int LastIgnoredType = 5;
constexpr int Places = static_cast<int>(HexPlace::Outside) + 1;

// The memories of a device by byte address.
class PlaceMap {
  public:
    explicit PlaceMap(const DeviceRecord& device)
        : programEnd_(2 * std::clamp(device.ProgramWords, 0, MemoryImage::ProgramWordsMax)),
          eepromEnd_(MemoryImage::Eeprom +
                     2 * std::clamp<int>(device.EepromBytes, 0, MemoryImage::EepromBytesMax)),
          twelveBit_(BlankWordHigh(device.TypeCode) == 0x0F) {}

    HexPlace At(int address) const {
        constexpr int between = MemoryImage::IdLocations + IdBytes;
        if (address < programEnd_)
            return HexPlace::ProgramMemory;
        if (Within(address, MemoryImage::IdLocations, between))
            return HexPlace::IdLocations;
        if (Within(address, between, MemoryImage::ConfigurationWord))
            return HexPlace::BetweenIdAndConfiguration;
        if (Within(address, MemoryImage::ConfigurationWord, MemoryImage::ConfigurationWord + 2))
            return HexPlace::ConfigurationWord;
        if (Within(address, MemoryImage::Eeprom, eepromEnd_))
            return HexPlace::Eeprom;
        return twelveBit_ ? AssemblersPlace(address) : HexPlace::Outside;
    }

  private:
    static bool Within(int address, int begin, int end) {
        return address >= begin && address < end;
    }

    HexPlace AssemblersPlace(int address) const {
        if (Within(address, programEnd_, programEnd_ + IdBytes))
            return HexPlace::AssemblerIdLocations;
        if (Within(address, AssemblerConfigurationAddress, AssemblerConfigurationAddress + 2))
            return HexPlace::AssemblerConfigurationWord;
        return HexPlace::Outside;
    }

    int programEnd_;
    int eepromEnd_;
    bool twelveBit_;
};

// Keeps which line stored each byte.
class Content {
  public:
    explicit Content(HexInspection& inspection)
        : inspection_(inspection), lines_(MemoryImage::Size, 0) {}

    void Store(const HexRecord& record, int line) {
        const int count = std::min<int>(record.ByteCount, HexRecord::DataMax);
        for (int index = 0; index < count; ++index)
            StoreByte(record.Address + index, record.Data[static_cast<std::size_t>(index)], line);
    }

    HexUse UseOf(HexPlace place, const PlaceMap& map) const {
        HexUse use{place, 0, {}};
        int lastWord = -1;
        for (int address = 0; address < MemoryImage::Size; ++address) {
            if (lines_[static_cast<std::size_t>(address)] == 0 || map.At(address) != place)
                continue;
            use.Words += address / 2 != lastWord ? 1 : 0;
            lastWord = address / 2;
            if (!use.Ranges.empty() && use.Ranges.back().Last == address - 1)
                use.Ranges.back().Last = address;
            else
                use.Ranges.push_back({address, address});
        }
        return use;
    }

  private:
    void StoreByte(int address, std::uint8_t value, int line) {
        int& owner = lines_[static_cast<std::size_t>(address)];
        if (owner != 0)
            NoteOverlap(address, inspection_.Image.Byte(address) == value, line, owner);
        owner = line;
        inspection_.Image.SetByte(address, value);
    }

    void NoteOverlap(int address, bool same, int line, int earlier) {
        auto& overlaps = inspection_.Overlaps;
        if (!overlaps.empty()) {
            HexOverlap& last = overlaps.back();
            if (last.Line == line && last.EarlierLine == earlier &&
                last.Range.Last == address - 1) {
                last.Range.Last = address;
                last.SameBytes = last.SameBytes && same;
                return;
            }
        }
        overlaps.push_back({line, earlier, {address, address}, same});
    }

    HexInspection& inspection_;
    std::vector<int> lines_;
};

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
        const auto record = ParseHexRecord(line);
        if (!record || cut)
            continue;
        lines.Records.push_back({*record, static_cast<int>(lines.Texts.size())});
        ended = record->Type == HexRecord::EndType;
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
    if (inspection.Load.Outcome == HexOutcome::TooManyLines)
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

}  // namespace

const HexUse* HexInspection::Use(HexPlace place) const {
    const auto found = std::ranges::find(Uses, place, &HexUse::Place);
    return found == Uses.end() ? nullptr : &*found;
}

HexInspection InspectHexText(std::string_view text, const DeviceRecord& device) {
    HexInspection inspection;
    inspection.Image.ClearProgramMemory(device.TypeCode);
    inspection.Image.ClearEeprom();
    inspection.Image.ClearConfiguration();
    HexRecordTable table;
    inspection.Load = ReadHexRecords(text, table);

    const Lines lines = TakeApart(text, inspection);
    const HexUnit unit = UnitOf(lines);
    inspection.WordAddressed = unit != HexUnit::Bytes;
    CheckLines(lines, unit, inspection);

    Content content(inspection);
    for (const auto& [record, line] : lines.Records) {
        if (Readable(record)) {
            ++inspection.DataRecords;
            content.Store(record, line);
        } else if (record.Type >= FirstIgnoredType && record.Type <= LastIgnoredType) {
            inspection.Ignored.push_back(Ignored(record, line));
        }
    }
    const PlaceMap map(device);
    for (int place = 0; place < Places; ++place)
        if (HexUse use = content.UseOf(static_cast<HexPlace>(place), map); use.Words > 0)
            inspection.Uses.push_back(std::move(use));
    return inspection;
}

}  // namespace Tamber
