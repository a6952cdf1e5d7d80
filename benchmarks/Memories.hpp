#pragma once

#include <memory>
#include <string>

#include "HexYardstick.hpp"
#include "core/MemoryImage.hpp"

namespace Tamber::Bench {

/// A HEX text of 10,000 lines: data records of 16 bytes over the whole range of addresses, in no
/// order, and the closing record. Lines end in CR LF.
std::string HexText10000();

/// Fills program memory, all 8,192 words, so that no block is like its neighbours.
void FillProgramMemory(MemoryImage& image);

/// The program's memory image and the yardstick's, with what that text stores.
struct Memories {
    Memories();

    std::string Text = HexText10000();
    MemoryImage Image;
    Memory Plain{};
};

}  // namespace Tamber::Bench
