#include "files/HexPlaces.hpp"

#include <algorithm>

namespace Tamber {

void HexUse::Add(int address) {
    Words += Ranges.empty() || Ranges.back().Last / 2 != address / 2 ? 1 : 0;
    if (!Ranges.empty() && Ranges.back().Last == address - 1)
        Ranges.back().Last = address;
    else
        Ranges.push_back({address, address});
}

int AssemblerIdAddress(const DeviceRecord& device) {
    return 2 * std::clamp(device.ProgramWords, 0, MemoryImage::ProgramWordsMax);
}

HexPlace PlaceOf(int address, const DeviceRecord& device) {
    constexpr int idBytes = 8;
    constexpr int between = MemoryImage::IdLocations + idBytes;
    const bool twelveBit = BlankWordHigh(device.TypeCode) == 0x0F;
    const int programBytes = AssemblerIdAddress(device);
    const int eepromBytes = std::clamp<int>(device.EepromBytes, 0, MemoryImage::EepromBytesMax);
    const struct {
        HexPlace Place;
        int Begin;
        int Bytes;
    } places[] = {
        {HexPlace::ProgramMemory, 0, programBytes},
        {HexPlace::IdLocations, MemoryImage::IdLocations, idBytes},
        {HexPlace::BetweenIdAndConfiguration, between, MemoryImage::ConfigurationWord - between},
        {HexPlace::ConfigurationWord, MemoryImage::ConfigurationWord, 2},
        {HexPlace::Eeprom, MemoryImage::Eeprom, 2 * eepromBytes},
        {HexPlace::AssemblerIdLocations, programBytes, twelveBit ? idBytes : 0},
        {HexPlace::AssemblerConfigurationWord, AssemblerConfigurationAddress, twelveBit ? 2 : 0}};
    for (const auto& [place, begin, bytes] : places)
        if (address >= begin && address < begin + bytes)
            return place;
    return HexPlace::Outside;
}

}  // namespace Tamber
