#include "files/DeviceCheck.hpp"

#include <algorithm>
#include <utility>

#include "files/DeviceFit.hpp"

namespace Tamber {
namespace {

using Kind = DeviceFindingKind;

class Checker {
  public:
    Checker(const HexInspection& inspection, const DeviceRecord& device, const DeviceFact& fact)
        : inspection_(inspection), device_(device), fact_(fact), words_(HeldWords(inspection)) {}

    void CheckWords();
    void CheckMovedData();
    void CheckPlaces(int address, int otherAddress, int words, std::uint16_t mask);
    void CheckConfiguration();
    void CheckCalibrationWord();
    void CheckOtherRecords();
    void CheckComments(const DeviceFacts& facts, const DeviceCatalogue& catalogue, int deviceCount);

    std::vector<DeviceFinding> TakeFindings() {
        std::ranges::stable_sort(findings_, {}, &DeviceFinding::Kind);
        return std::move(findings_);
    }

  private:
    DeviceFinding& Add(Kind kind, int address);
    std::uint16_t Word(int address) const {
        return inspection_.Word(address, BlankWordHigh(device_.TypeCode));
    }
    bool HoldsElsewhere(int address) const;
    void CheckUnimplementedBits(int address);

    const HexInspection& inspection_;
    const DeviceRecord& device_;
    const DeviceFact& fact_;
    std::vector<int> words_;
    std::vector<DeviceFinding> findings_;
};

// The finding of that kind, counted once more, or a new one about the word at `address`.
DeviceFinding& Checker::Add(Kind kind, int address) {
    const auto found = std::ranges::find(findings_, kind, &DeviceFinding::Kind);
    if (found != findings_.end()) {
        ++found->Count;
        return *found;
    }
    auto origin = inspection_.Origins.begin() + address;
    if (!origin->Meant())
        ++origin;  // to the high byte
    const bool held = origin->Meant();
    return findings_.emplace_back(DeviceFinding{.Kind = kind,
                                                .Line = held ? origin->Line : 0,
                                                .Column = held ? origin->Column : 0,
                                                .Address = address,
                                                .Value = Word(address)});
}

void Checker::CheckWords() {
    for (const int address : words_) {
        if (const auto misfit = MisfitOf(inspection_, address, device_, fact_))
            Add(*misfit, address);
        const auto origin = inspection_.Origins.begin() + address;
        if (origin->Conflicting || std::next(origin)->Conflicting)
            Add(Kind::GivenTwice, address).OtherLine = inspection_.ConflictEarlierLine;
    }
}

void Checker::CheckMovedData() {
    if (const auto& moved = inspection_.Moved)
        findings_.push_back({.Kind = Kind::MovedData,
                             .Line = moved->Line,
                             .Address = moved->Address,
                             .Count = moved->Words});
}

// The file holds something there that the image keeps elsewhere.
bool Checker::HoldsElsewhere(int address) const {
    const HexPlace place = PlaceOf(address, device_, fact_);
    return (place == HexPlace::AssemblerConfigurationWord ||
            place == HexPlace::AssemblerIdLocations) &&
           inspection_.Holds(address);
}

// Words at `address`, for assemblers, that the image keeps at `otherAddress`.
void Checker::CheckPlaces(int address, int otherAddress, int words, std::uint16_t mask) {
    for (const int end = address + 2 * words; address < end; address += 2, otherAddress += 2) {
        if (!HoldsElsewhere(address))
            continue;
        Kind kind = Kind::ElsewhereInFile;
        if (inspection_.Holds(otherAddress))
            kind = ((Word(address) ^ Word(otherAddress)) & mask) != 0 ? Kind::TwoPlaces
                                                                      : Kind::SameInTwoPlaces;
        DeviceFinding& finding = Add(kind, address);
        if (finding.Count > 1)
            continue;
        finding.OtherAddress = otherAddress;
        finding.OtherValue = Word(otherAddress);
        const auto origin = inspection_.Origins.begin() + otherAddress;
        finding.OtherLine = origin->Meant() ? origin->Line : std::next(origin)->Line;
    }
}

void Checker::CheckConfiguration() {
    const int elsewhere = AssemblerConfigurationAddress(device_, fact_);
    CheckPlaces(elsewhere, MemoryImage::ConfigurationWord, 1,
                fact_.ConfigurationMask.value_or(0xFFFF));
    CheckPlaces(AssemblerIdAddress(device_, fact_), MemoryImage::IdLocations, IdBytes / 2,
                fact_.IdMask.value_or(0xFFFF));
    if (inspection_.Holds(MemoryImage::ConfigurationWord))
        CheckUnimplementedBits(MemoryImage::ConfigurationWord);
    else if (HoldsElsewhere(elsewhere))
        CheckUnimplementedBits(elsewhere);
    else
        findings_.push_back({.Kind = Kind::NoConfigurationWord, .Value = 0x3FFF});
    if (inspection_.Holds(SecondConfigurationAddress))
        Add(Kind::SecondConfigurationWord, SecondConfigurationAddress);
}

void Checker::CheckUnimplementedBits(int address) {
    const int word = Word(address);
    const bool blank = word == 0x3FFF || word == 0xFFFF;
    if (!fact_.ConfigurationMask || !fact_.UnimplementedReads || blank)
        return;
    const int wordMask = BlankWordHigh(device_.TypeCode) << 8 | 0xFF;
    const int others = *fact_.UnimplementedReads ? wordMask & ~*fact_.ConfigurationMask : 0;
    if (word != ((word & *fact_.ConfigurationMask) | others))
        Add(Kind::UnimplementedBits, address).OtherValue = *fact_.ConfigurationMask;
}

void Checker::CheckCalibrationWord() {
    const bool sized =
        device_.ProgramWords > 0 && device_.ProgramWords <= MemoryImage::ProgramWordsMax;
    if (!sized || !fact_.HasCalibrationWord.value_or(false))
        return;
    const int address = 2 * (device_.ProgramWords - 1);
    if (!inspection_.Holds(address) || !IsCalibrationWord(Word(address), device_.TypeCode))
        Add(Kind::NoCalibrationWord, address);
}

void Checker::CheckOtherRecords() {
    const auto count = [&](HexFindingKind kind) { return inspection_.Findings.Total(kind, kind); };
    const int starts =
        count(HexFindingKind::StartSegmentAddress) + count(HexFindingKind::StartLinearAddress);
    const auto& kept = inspection_.Findings.Kept();
    const auto start = std::ranges::find_if(kept, [](const HexFinding& finding) {
        return finding.Kind == HexFindingKind::StartSegmentAddress ||
               finding.Kind == HexFindingKind::StartLinearAddress;
    });
    if (start != kept.end())
        findings_.push_back({.Kind = Kind::StartRecord, .Line = start->Line, .Count = starts});
    if (inspection_.LinesAfterEnd > 0)
        findings_.push_back({.Kind = Kind::LinesAfterEnd,
                             .Line = inspection_.Lines + 1,
                             .Count = inspection_.LinesAfterEnd});
}

void Checker::CheckComments(const DeviceFacts& facts, const DeviceCatalogue& catalogue,
                            int deviceCount) {
    const DeviceRecord* named = nullptr;
    for (const HexComment& comment : inspection_.Comments) {
        named = DeviceNamedBy(comment, catalogue, deviceCount);
        if (named && named->Name != device_.Name)
            findings_.push_back(
                {.Kind = Related(*named, device_) ? Kind::NamesSibling : Kind::NamesOther,
                 .Line = comment.Line,
                 .Named = named->Name});
        if (named)
            break;
    }
    const auto fitCouldHelp = [](const DeviceFinding& finding) {
        return finding.Kind >= Kind::NamesOther && finding.Kind <= Kind::BeyondRegions;
    };
    if (inspection_.Moved || std::ranges::none_of(findings_, fitCouldHelp))
        return;
    std::string better;
    if (!named)
        better = OnlyFitting(inspection_, words_, facts, catalogue, deviceCount);
    else if (named->Name != device_.Name &&
             Fits(inspection_, words_, *named, facts.Of(named->Name)))
        better = named->Name;
    for (DeviceFinding& finding : findings_)
        if (fitCouldHelp(finding))
            finding.Better = better;
}

}  // namespace

std::vector<DeviceFinding> CheckForDevice(const HexInspection& inspection,
                                          const DeviceRecord& device, const DeviceFacts& facts,
                                          const DeviceCatalogue& catalogue, int deviceCount) {
    if (inspection.WordAddressed)  // nothing else about it would be true
        return {{.Kind = Kind::WordAddressed}};
    Checker checker(inspection, device, facts.Of(device.Name));
    checker.CheckWords();
    checker.CheckMovedData();
    checker.CheckConfiguration();
    checker.CheckCalibrationWord();
    checker.CheckOtherRecords();
    checker.CheckComments(facts, catalogue, deviceCount);
    return checker.TakeFindings();
}

bool AnyHarmful(const std::vector<DeviceFinding>& findings) {
    return std::ranges::any_of(findings, [](const DeviceFinding& finding) {
        return SeverityOf(finding.Kind) == HexSeverity::Harmful;
    });
}

}  // namespace Tamber
