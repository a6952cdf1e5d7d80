#pragma once

#include <cstdint>

namespace Tamber {

/// What one frame carries, in words (program memory) or EEPROM bytes.
constexpr int BlockWords = 8;

/// `size` / 8 rounded to the nearest whole number, halves to the even neighbour: 12 gives 2,
/// 20 gives 2, 4 gives 0.
constexpr int BlockCount(int size) {
    const int quotient = size >= 0 ? size / BlockWords : -((-size + BlockWords - 1) / BlockWords);
    const int rest = size - quotient * BlockWords;  // 0..7
    if (rest > BlockWords / 2 || (rest == BlockWords / 2 && quotient % 2 != 0))
        return quotient + 1;
    return quotient;
}

/// The number of a region's last block: `size` / 8 - 1, rounded by itself in the same way, so that
/// for 12 it is 0 and for 20 it is 2. Below 0 the region has no block.
constexpr int LastBlock(int size) {
    return BlockCount(size - BlockWords);
}

/// `done` of `total` blocks in whole per cent, cut off; 0 when there are no blocks.
constexpr std::int16_t Percent(int done, int total) {
    return total <= 0 ? std::int16_t{0} : static_cast<std::int16_t>(done * 100 / total);
}

}  // namespace Tamber
