#include "files/HexMove.hpp"

namespace Tamber {
namespace {

// Moves a word if the file has it at `from` and only there.
bool MoveWord(const HexInspection& inspection, int from, int to, MemoryImage& image) {
    if (!inspection.Holds(from) || inspection.Holds(to))
        return false;
    for (int byte = 0; byte < 2; ++byte)
        if (inspection.Origins[static_cast<std::size_t>(from + byte)].Meant())
            image.SetByte(to + byte, inspection.Image.Byte(from + byte));
    return true;
}

}  // namespace

HexMove MoveToImagePlaces(const HexInspection& inspection, const DeviceRecord& device,
                          const DeviceFact& fact, MemoryImage& image) {
    HexMove moved;
    const int word = AssemblerConfigurationAddress(device, fact);
    constexpr int to = MemoryImage::ConfigurationWord;
    if (fact.FileConfiguration &&
        PlaceOf(word, device, fact) == HexPlace::AssemblerConfigurationWord &&
        MoveWord(inspection, word, to, image))
        moved.ConfigurationWord = image.Word(to);
    const int ids = AssemblerIdAddress(device, fact);
    for (int offset = 0; fact.FileIds && offset < IdBytes; offset += 2)
        if (PlaceOf(ids + offset, device, fact) == HexPlace::AssemblerIdLocations)
            moved.IdLocations +=
                MoveWord(inspection, ids + offset, MemoryImage::IdLocations + offset, image) ? 1
                                                                                             : 0;
    return moved;
}

}  // namespace Tamber
