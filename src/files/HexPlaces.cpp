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

namespace {

int ProgramBytes(const DeviceRecord& device) {
    return 2 * std::clamp(device.ProgramWords, 0, MemoryImage::ProgramWordsMax);
}

}  // namespace

int AssemblerConfigurationAddress(const DeviceRecord& device, const DeviceFact& fact) {
    constexpr int twelveBits = 0x1FFE;
    return fact.FileConfiguration.value_or(
        HasTwelveBitWords(device.TypeCode) ? twelveBits : MemoryImage::ConfigurationWord);
}

int AssemblerIdAddress(const DeviceRecord& device, const DeviceFact& fact) {
    return fact.FileIds.value_or(HasTwelveBitWords(device.TypeCode) ? ProgramBytes(device)
                                                                    : MemoryImage::IdLocations);
}

HexPlace PlaceOf(int address, const DeviceRecord& device, const DeviceFact& fact) {
    constexpr int between = MemoryImage::IdLocations + IdBytes;
    const int eepromBytes = std::clamp<int>(device.EepromBytes, 0, MemoryImage::EepromBytesMax);
    const struct {
        HexPlace Place;
        int Begin;
        int Bytes;
    } places[] = {
        {HexPlace::ProgramMemory, 0, ProgramBytes(device)},
        {HexPlace::IdLocations, MemoryImage::IdLocations, IdBytes},
        {HexPlace::BetweenIdAndConfiguration, between, MemoryImage::ConfigurationWord - between},
        {HexPlace::ConfigurationWord, MemoryImage::ConfigurationWord, 2},
        {HexPlace::Eeprom, MemoryImage::Eeprom, 2 * eepromBytes},
        {HexPlace::AssemblerIdLocations, AssemblerIdAddress(device, fact), IdBytes},
        {HexPlace::AssemblerConfigurationWord, AssemblerConfigurationAddress(device, fact), 2}};
    for (const auto& [place, begin, bytes] : places)
        if (address >= begin && address < begin + bytes)
            return place;
    return HexPlace::Outside;
}

}  // namespace Tamber
