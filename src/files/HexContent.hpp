#pragma once

#include <vector>

#include "files/HexInspect.hpp"

namespace Tamber {

/// The memories of a device by byte address.
class HexPlaceMap {
  public:
    explicit HexPlaceMap(const DeviceRecord& device);

    HexPlace At(int address) const;

  private:
    HexPlace AssemblersPlace(int address) const;

    int programEnd_;
    int eepromEnd_;
    bool twelveBit_;
};

/// Stores records into the image of an inspection and keeps which line stored each byte; overlaps
/// go to the inspection.
class HexContent {
  public:
    explicit HexContent(HexInspection& inspection);

    void Store(const HexRecord& record, int line);

    /// What has been stored in one place of the map.
    HexUse UseOf(HexPlace place, const HexPlaceMap& map) const;

  private:
    void StoreByte(int address, std::uint8_t value, int line);
    void NoteOverlap(int address, bool same, int line, int earlier);

    HexInspection& inspection_;
    std::vector<int> lines_;  // by address; 0: nothing stored
};

}  // namespace Tamber
