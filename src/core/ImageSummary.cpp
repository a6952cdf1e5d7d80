#include "core/ImageSummary.hpp"

#include <algorithm>
#include <numeric>

#include "core/HexText.hpp"

namespace Tamber {

std::uint32_t ProgramChecksum(const MemoryImage& image, int programWords) {
    const auto bytes =
        image.Bytes(0, std::clamp(programWords, 0, 2 * MemoryImage::ProgramWordsMax));
    return std::accumulate(bytes.begin(), bytes.end(), std::uint32_t{0}) % 65'536;
}

std::string IdLocationsText(const MemoryImage& image) {
    std::string text;
    for (int location = 0; location < 4; ++location)
        AppendHexByte(text, image.Byte(MemoryImage::IdLocations + 2 * location));
    return text;
}

std::string ConfigurationWordText(const MemoryImage& image) {
    return HexByte(image.Byte(MemoryImage::ConfigurationWord + 1)) +
           HexByte(image.Byte(MemoryImage::ConfigurationWord));
}

}  // namespace Tamber
