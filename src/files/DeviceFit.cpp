#include "files/DeviceFit.hpp"

#include <algorithm>

namespace Tamber {
namespace {

using Kind = DeviceFindingKind;

bool IsLetter(char character) {
    const char upper = static_cast<char>(character & ~0x20);
    return upper >= 'A' && upper <= 'Z';
}

bool SameLetter(char first, char second) {
    return first == second || (IsLetter(first) && (first ^ second) == 0x20);
}

std::string_view WithoutLastLetter(std::string_view name) {
    if (!name.empty() && IsLetter(name.back()))
        name.remove_suffix(1);
    return name;
}

bool IsWide(std::uint16_t word, std::int16_t typeCode) {
    return word != 0xFFFF && word >> 8 > BlankWordHigh(typeCode);
}

Kind BeyondKind(int address) {
    if (address < MemoryImage::IdLocations)
        return Kind::BeyondProgramMemory;
    const bool eeprom = address >= MemoryImage::Eeprom &&
                        address < MemoryImage::Eeprom + 2 * MemoryImage::EepromBytesMax;
    return eeprom ? Kind::BeyondEeprom : Kind::BeyondRegions;
}

}  // namespace

std::vector<int> HeldWords(const HexInspection& inspection) {
    std::vector<int> words;
    for (int address = 0; address + 1 < MemoryImage::Size; address += 2)
        if (inspection.Holds(address))
            words.push_back(address);
    return words;
}

std::optional<Kind> MisfitOf(const HexInspection& inspection, int address,
                             const DeviceRecord& device, const DeviceFact& fact) {
    const std::uint8_t blankHigh = BlankWordHigh(device.TypeCode);
    const std::uint16_t word = inspection.Word(address, blankHigh);
    const HexPlace place = PlaceOf(address, device, fact);
    if (place == HexPlace::ProgramMemory && IsWide(word, device.TypeCode))
        return Kind::WideWords;
    if (place != HexPlace::Outside || address == SecondConfigurationAddress)
        return std::nullopt;
    const Kind kind = BeyondKind(address);
    const bool lowBlank = (word & 0xFF) == 0xFF;  // an EEPROM byte has no other
    const bool blank =
        lowBlank && (kind == Kind::BeyondEeprom || word >> 8 == blankHigh || word >> 8 == 0xFF);
    return blank ? std::nullopt : std::optional(kind);
}

bool Fits(const HexInspection& inspection, const std::vector<int>& words,
          const DeviceRecord& device, const DeviceFact& fact) {
    return std::ranges::none_of(words, [&](int address) {
        return MisfitOf(inspection, address, device, fact).has_value();
    });
}

std::string OnlyFitting(const HexInspection& inspection, const std::vector<int>& words,
                        const DeviceFacts& facts, const DeviceCatalogue& catalogue,
                        int deviceCount) {
    std::string only;
    for (int slot = 1; slot <= deviceCount; ++slot) {
        const DeviceRecord& device = catalogue.Record(slot);
        if (!Fits(inspection, words, device, facts.Of(device.Name)))
            continue;
        if (!only.empty())
            return "";
        only = device.Name;
    }
    return only;
}

const DeviceRecord* DeviceNamedBy(const HexComment& comment, const DeviceCatalogue& catalogue,
                                  int deviceCount) {
    for (int slot = 1; slot <= deviceCount; ++slot)
        if (std::ranges::equal(comment.Text, catalogue.Record(slot).Name, SameLetter))
            return &catalogue.Record(slot);
    return nullptr;
}

bool Related(const DeviceRecord& first, const DeviceRecord& second) {
    return first.TypeCode == second.TypeCode ||
           std::ranges::equal(WithoutLastLetter(first.Name), WithoutLastLetter(second.Name),
                              SameLetter);
}

}  // namespace Tamber
