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
    Inspector(HexInspection& inspection, const DeviceRecord& device)
        : inspection_(inspection), device_(device), owners_(MemoryImage::Size, 0) {}

    void Walk(std::string_view text);
    void FindUses();

  private:
    void Take(const HexRecord& record, int line);
    void Report(HexFinding finding, int line, std::optional<HexFault> fault);
    void NoteIgnored(const HexRecord& record, int line);
    void Store(const HexRecord& record, int line);

    HexInspection& inspection_;
    const DeviceRecord& device_;
    HexWordAddressing wordAddressing_;
    std::vector<int> owners_;  // the line that stored each byte; 0: none
};

void Inspector::Walk(std::string_view text) {
    LineReader lines(text);
    bool ended = false;
    while (!lines.AtEnd() && !ended) {
        const HexRecord record(lines);
        Take(record, lines.Number());
        ended = record.Type == HexRecord::EndType;
    }
    inspection_.Lines = lines.Number();
    if (!ended)
        Report({.Kind = Kind::NoEndRecord}, lines.Number() + 1, HexFault::NoEndRecord);
    while (!lines.AtEnd())
        lines.Next();
    inspection_.LinesAfterEnd = lines.Number() - inspection_.Lines;
    if (inspection_.LinesAfterEnd > 0)
        inspection_.Findings.Add({.Kind = Kind::LinesAfterEnd,
                                  .Severity = Severity::Note,
                                  .Found = inspection_.LinesAfterEnd});
    inspection_.WordAddressed = wordAddressing_.Found();
    if (wordAddressing_.CountsWords())
        inspection_.Findings.Drop(Kind::WordCount);
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
    const bool shiftsAddresses = record.Type % 2 == 0 && value != 0;
    inspection_.Findings.Add({.Kind = static_cast<Kind>(kind),
                              .Severity = shiftsAddresses ? Severity::Harmful : Severity::Note,
                              .Line = line,
                              .Found = value});
}

void Inspector::Store(const HexRecord& record, int line) {
    ++inspection_.DataRecords;
    wordAddressing_.Add(record);
    HexFinding run;  // of bytes that one earlier line, or none, has stored
    const auto endRun = [&] {
        if (run.EarlierLine != 0)
            inspection_.Findings.Add(run);
    };
    for (int address = record.Address; address < record.Address + record.ByteCount; ++address) {
        const std::uint8_t value = record.Data[static_cast<std::size_t>(address - record.Address)];
        int& owner = owners_[static_cast<std::size_t>(address)];
        if (owner != run.EarlierLine) {
            endRun();
            run = {.Kind = Kind::Overlap,
                   .Severity = Severity::Note,
                   .Line = line,
                   .Bytes = {address, address},
                   .EarlierLine = owner};
        }
        run.Bytes.Last = address;
        if (inspection_.Image.Byte(address) != value)
            run.Severity = Severity::Harmful;
        owner = line;
        inspection_.Image.SetByte(address, value);
    }
    endRun();
}

void Inspector::FindUses() {
    const MemoryImage blank = BlankImage(device_);
    std::array<HexUse, Places> uses;
    for (int address = 0; address < MemoryImage::Size; ++address) {
        if (owners_[static_cast<std::size_t>(address)] == 0)
            continue;
        const HexPlace place = PlaceOf(address, device_);
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

HexInspection InspectHexText(std::string_view text, const DeviceRecord& device) {
    HexInspection inspection;
    inspection.Image = BlankImage(device);
    Inspector inspector(inspection, device);
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
