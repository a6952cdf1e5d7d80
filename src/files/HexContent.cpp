#include "files/HexContent.hpp"

#include <algorithm>

namespace Tamber {
namespace {

constexpr int IdBytes = 8;
constexpr std::uint8_t TwelveBitHigh = 0x0F;

bool Within(int address, int begin, int end) {
    return address >= begin && address < end;
}

}  // namespace

int AssemblerIdAddress(const DeviceRecord& device) {
    return 2 * std::clamp(device.ProgramWords, 0, MemoryImage::ProgramWordsMax);
}

HexPlaceMap::HexPlaceMap(const DeviceRecord& device)
    : programEnd_(AssemblerIdAddress(device)),
      eepromEnd_(MemoryImage::Eeprom +
                 2 * std::clamp<int>(device.EepromBytes, 0, MemoryImage::EepromBytesMax)),
      twelveBit_(BlankWordHigh(device.TypeCode) == TwelveBitHigh) {}

HexPlace HexPlaceMap::At(int address) const {
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

HexPlace HexPlaceMap::AssemblersPlace(int address) const {
    if (Within(address, programEnd_, programEnd_ + IdBytes))
        return HexPlace::AssemblerIdLocations;
    if (Within(address, AssemblerConfigurationAddress, AssemblerConfigurationAddress + 2))
        return HexPlace::AssemblerConfigurationWord;
    return HexPlace::Outside;
}

HexContent::HexContent(HexInspection& inspection)
    : inspection_(inspection), lines_(MemoryImage::Size, 0) {}

void HexContent::Store(const HexRecord& record, int line) {
    const int count = std::min<int>(record.ByteCount, HexRecord::DataMax);
    for (int index = 0; index < count; ++index)
        StoreByte(record.Address + index, record.Data[static_cast<std::size_t>(index)], line);
}

HexUse HexContent::UseOf(HexPlace place, const HexPlaceMap& map) const {
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

void HexContent::StoreByte(int address, std::uint8_t value, int line) {
    int& owner = lines_[static_cast<std::size_t>(address)];
    if (owner != 0)
        NoteOverlap(address, inspection_.Image.Byte(address) == value, line, owner);
    owner = line;
    inspection_.Image.SetByte(address, value);
}

void HexContent::NoteOverlap(int address, bool same, int line, int earlier) {
    auto& overlaps = inspection_.Overlaps;
    if (!overlaps.empty()) {
        HexOverlap& last = overlaps.back();
        if (last.Line == line && last.EarlierLine == earlier && last.Range.Last == address - 1) {
            last.Range.Last = address;
            last.SameBytes = last.SameBytes && same;
            return;
        }
    }
    overlaps.push_back({line, earlier, {address, address}, same});
}

}  // namespace Tamber
