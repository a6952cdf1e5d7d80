#pragma once

#include <cstdint>

namespace Tamber {

/// What one frame carries, in words (program memory) or EEPROM bytes.
constexpr int BlockWords = 8;

/// `size` / 8 rounded to the nearest whole number, halves to the even neighbour: 12 gives 2,
/// 20 gives 2, 4 gives 0. Takes any size of 32 bits, and one less a block.
constexpr int BlockCount(std::int64_t size) {
    const std::int64_t quotient =
        size >= 0 ? size / BlockWords : -((-size + BlockWords - 1) / BlockWords);
    const std::int64_t rest = size - quotient * BlockWords;  // 0..7
    const bool up = rest > BlockWords / 2 || (rest == BlockWords / 2 && quotient % 2 != 0);
    return static_cast<int>(up ? quotient + 1 : quotient);
}

/// The number of a region's last block: `size` / 8 - 1, rounded by itself in the same way, so that
/// for 12 it is 0 and for 20 it is 2. Below 0 the region has no block.
constexpr int LastBlock(int size) {
    return BlockCount(std::int64_t{size} - BlockWords);
}

/// `done` of `total` blocks in whole per cent, cut off; 0 when there are no blocks.
constexpr std::int16_t Percent(int done, int total) {
    return total <= 0 ? std::int16_t{0} : static_cast<std::int16_t>(done * 100 / total);
}

}  // namespace Tamber
