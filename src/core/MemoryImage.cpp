#include "core/MemoryImage.hpp"

#include <algorithm>
#include <cstdlib>

#include "core/DeviceCatalogue.hpp"

namespace Tamber {

std::size_t MemoryImage::Checked(int index, int count) {
    if (index < 0 || count < 0 || index > Size - count)
        std::abort();
    return static_cast<std::size_t>(index);
}

void MemoryImage::Store(int index, std::span<const std::uint8_t> values) {
    std::ranges::copy(values, bytes_.begin() + static_cast<std::ptrdiff_t>(Checked(
                                                   index, static_cast<int>(values.size()))));
}

void MemoryImage::ClearProgramMemory(std::int16_t typeCode) {
    for (int word = 0; word < ProgramWordsMax; ++word) {
        SetByte(2 * word, 0xFF);
        SetByte(2 * word + 1, BlankWordHigh(typeCode));
    }
}

void MemoryImage::ClearEeprom() {
    std::fill_n(bytes_.begin() + Eeprom, 2 * EepromBytesMax, std::uint8_t{0xFF});
}

void MemoryImage::ClearConfiguration() {
    std::fill(bytes_.begin() + IdLocations, bytes_.begin() + ConfigurationWord + 1,
              std::uint8_t{0xFF});
    SetByte(ConfigurationWord + 1, 0x3F);
}

}  // namespace Tamber
