#include "files/HexInspect.hpp"

#include <algorithm>
#include <array>

#include "files/HexWordAddressing.hpp"

namespace Tamber {
namespace {

constexpr int FirstIgnoredType = 2;
constexpr int LastIgnoredType = 5;
constexpr std::size_t Places = static_cast<std::size_t>(HexPlace::Outside) + 1;

using Kind = HexFindingKind;
using Severity = HexSeverity;

class Inspector {
  public:
    Inspector(HexInspection& inspection, const DeviceRecord& device, const DeviceFact& fact)
        : inspection_(inspection), device_(device), fact_(fact) {}

    void Walk(std::string_view text);
    void FindUses();

  private:
    void Take(const HexRecord& record, int line);
    void Report(HexFinding finding, int line, std::optional<HexFault> fault);
    void NoteIgnored(const HexRecord& record, int line);
    void Store(const HexRecord& record, int line);
    void StoreByte(const HexRecord& record, int address, int line);
    void TakeLinesAfterEnd(LineReader& lines);

    HexInspection& inspection_;
    const DeviceRecord& device_;
    const DeviceFact& fact_;
    HexWordAddressing wordAddressing_;
    std::int64_t base_ = 0;  // what the last extended address adds to addresses
    int baseLine_ = 0;
};

void Inspector::Walk(std::string_view text) {
    LineReader lines(text);
    bool ended = false;
    while (!lines.AtEnd() && !ended && lines.Number() <= HexRecordTableMax) {
        const HexRecord record(lines);
        Take(record, lines.Number());
        ended = record.Type == HexRecord::EndType;
    }
    inspection_.Lines = lines.Number();
    if (!ended && lines.AtEnd())
        Report({.Kind = Kind::NoEndRecord}, lines.Number() + 1, HexFault::NoEndRecord);
    if (ended)
        TakeLinesAfterEnd(lines);
    inspection_.LinesAfterEnd = lines.Number() - inspection_.Lines;
    if (inspection_.LinesAfterEnd > 0)
        inspection_.Findings.Add({.Kind = Kind::LinesAfterEnd,
                                  .Severity = Severity::Note,
                                  .Found = inspection_.LinesAfterEnd});
    inspection_.WordAddressed = wordAddressing_.Found();
    if (wordAddressing_.CountsWords())
        inspection_.Findings.Drop(Kind::WordCount);
}

void Inspector::TakeLinesAfterEnd(LineReader& lines) {
    constexpr std::size_t lengthMax = 80;
    constexpr char blanks[] = " \t";
    while (!lines.AtEnd() && lines.Number() <= inspection_.Lines + LinesAfterEndMax) {
        const std::string_view line = lines.Next();
        const std::size_t begin = line.find_first_not_of(blanks, 1);
        if (!line.starts_with(';') || begin == std::string_view::npos || line.size() > lengthMax ||
            inspection_.Comments.size() == HexFindings::KeptMax)
            continue;
        const std::size_t end = line.find_last_not_of(blanks) + 1;
        inspection_.Comments.push_back(
            {lines.Number(), std::string(line.substr(begin, end - begin))});
    }
}

void Inspector::Take(const HexRecord& record, int line) {
    if (line == HexRecordTableMax + 1)
        Report({.Kind = Kind::TooManyLines}, line, HexFault::TooManyLines);
    if (const auto finding = CheckHexLine(record))
        Report(*finding, line, record.Fault);
    if (record.HoldsData())
        Store(record, line);
    else if (record.Type >= FirstIgnoredType && record.Type <= LastIgnoredType)
        NoteIgnored(record, line);
}

void Inspector::Report(HexFinding finding, int line, std::optional<HexFault> fault) {
    finding.Line = line;
    finding.Severity = fault ? Severity::Refused : Severity::Malformed;
    if (fault && !inspection_.Refusal)
        inspection_.Refusal = HexRefusal{*fault, finding};
    inspection_.Findings.Add(finding);
}

void Inspector::NoteIgnored(const HexRecord& record, int line) {
    constexpr int valueBytes = 4;
    std::uint32_t value = 0;
    for (int index = 0; index < std::min<int>(record.ByteCount, valueBytes); ++index)
        value = value << 8 | record.Data[static_cast<std::size_t>(index)];
    const int kind =
        static_cast<int>(Kind::ExtendedSegmentAddress) + record.Type - FirstIgnoredType;
    const bool extendedAddress = record.Type % 2 == 0;
    const bool shiftsAddresses = extendedAddress && value != 0;
    if (extendedAddress) {
        base_ = std::int64_t{value} << (record.Type == FirstIgnoredType ? 4 : 16);
        baseLine_ = line;
    }
    inspection_.Findings.Add({.Kind = static_cast<Kind>(kind),
                              .Severity = shiftsAddresses ? Severity::Harmful : Severity::Note,
                              .Line = line,
                              .Found = value});
}

void Inspector::Store(const HexRecord& record, int line) {
    ++inspection_.DataRecords;
    wordAddressing_.Add(record);
    if (base_ != 0 && record.ByteCount > 0) {
        if (!inspection_.Moved)
            inspection_.Moved = HexMovedData{baseLine_, base_ + record.Address, 0};
        inspection_.Moved->Words += (record.ByteCount + 1) / 2;
    }
    HexFinding run;  // of bytes that one earlier line, or none, has stored
    const auto endRun = [&] {
        if (run.EarlierLine != 0)
            inspection_.Findings.Add(run);
    };
    for (int address = record.Address; address < record.Address + record.ByteCount; ++address) {
        const int owner = inspection_.Origins[static_cast<std::size_t>(address)].Line;
        if (owner != run.EarlierLine) {
            endRun();
            run = {.Kind = Kind::Overlap,
                   .Severity = Severity::Note,
                   .Line = line,
                   .Bytes = {address, address},
                   .EarlierLine = owner};
        }
        run.Bytes.Last = address;
        if (inspection_.Image.Byte(address) !=
            record.Data[static_cast<std::size_t>(address - record.Address)])
            run.Severity = Severity::Harmful;
        StoreByte(record, address, line);
    }
    endRun();
}

void Inspector::StoreByte(const HexRecord& record, int address, int line) {
    const int index = address - record.Address;
    const std::uint8_t value = record.Data[static_cast<std::size_t>(index)];
    HexOrigin& origin = inspection_.Origins[static_cast<std::size_t>(address)];
    const bool moved = base_ != 0;
    const bool conflict = origin.Meant() && !moved && inspection_.Image.Byte(address) != value;
    if (conflict && inspection_.ConflictEarlierLine == 0)
        inspection_.ConflictEarlierLine = origin.Line;
    constexpr int firstColumn = HexRecord::DataIndex + 1;
    origin = {line, static_cast<std::uint8_t>(firstColumn + 2 * index), moved,
              origin.Conflicting || conflict};
    inspection_.Image.SetByte(address, value);
}

void Inspector::FindUses() {
    const MemoryImage blank = BlankImage(device_);
    std::array<HexUse, Places> uses;
    for (int address = 0; address < MemoryImage::Size; ++address) {
        if (inspection_.Origins[static_cast<std::size_t>(address)].Line == 0)
            continue;
        const HexPlace place = PlaceOf(address, device_, fact_);
        HexUse& use = uses[static_cast<std::size_t>(place)];
        use.Place = place;
        use.Add(address);
        const std::uint8_t value = inspection_.Image.Byte(address);
        if (place == HexPlace::Outside && value != blank.Byte(address) && value != 0xFF)
            inspection_.OutsideBlank = false;
    }
    std::ranges::copy_if(uses, std::back_inserter(inspection_.Uses),
                         [](const HexUse& use) { return use.Words > 0; });
}

}  // namespace

const HexUse* HexInspection::Use(HexPlace place) const {
    const auto found = std::ranges::find(Uses, place, &HexUse::Place);
    return found == Uses.end() ? nullptr : &*found;
}

bool HexInspection::Holds(int address) const {
    const auto index = static_cast<std::size_t>(address);
    return Origins[index].Meant() || Origins[index + 1].Meant();
}

std::uint16_t HexInspection::Word(int address, std::uint8_t high) const {
    const auto byte = [&](int at, std::uint8_t otherwise) {
        return Origins[static_cast<std::size_t>(at)].Meant() ? Image.Byte(at) : otherwise;
    };
    return static_cast<std::uint16_t>(byte(address + 1, high) << 8 | byte(address, 0xFF));
}

HexInspection InspectHexText(std::string_view text, const DeviceRecord& device,
                             const DeviceFact& fact) {
    HexInspection inspection;
    inspection.Image = BlankImage(device);
    inspection.Origins.resize(MemoryImage::Size);
    Inspector inspector(inspection, device, fact);
    inspector.Walk(text);
    inspector.FindUses();
    return inspection;
}

MemoryImage BlankImage(const DeviceRecord& device) {
    MemoryImage image;
    image.ClearProgramMemory(device.TypeCode);
    image.ClearEeprom();
    image.ClearConfiguration();
    return image;
}

}  // namespace Tamber
