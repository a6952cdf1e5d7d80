#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <cstdio>
#include <limits>

#include "core/Blocks.hpp"
#include "core/HexText.hpp"

namespace Tamber {
namespace {

std::string Printed(const char* format, std::uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

TEST(HexText, WordsArePaddedToFourDigitsAndNeverCut) {
    for (const std::uint32_t value :
         {0u, 0xFu, 0x10u, 0xFFu, 0x100u, 0xFFFu, 0x1000u, 0xFFFFu, 0x1ABCDu, 0xFFFFFFFFu}) {
        EXPECT_EQ(HexWord(value), Printed("%04X", value));
        EXPECT_EQ(HexNumber(value), Printed("%X", value));
    }
}

TEST(HexText, BytesAreTwoUpperCaseDigitsAndDigitsReadBackInEitherCase) {
    for (int value = 0; value < 256; ++value) {
        EXPECT_EQ(HexByte(static_cast<std::uint8_t>(value)),
                  Printed("%02X", static_cast<std::uint32_t>(value)));
        const std::string digit(1, static_cast<char>(value));
        EXPECT_EQ(HexDigitValue(digit[0]),
                  std::isxdigit(value) ? std::stoi(digit, nullptr, 16) : -1)
            << value;
    }
}

// The processor's own rounding to the nearest whole number, halves to the even one, is the measure.
TEST(Blocks, SizesThatAreNoMultipleOfABlockRoundToTheNearestHalvesToEven) {
    const auto check = [](int size) {
        EXPECT_EQ(BlockCount(size), std::nearbyint(size / 8.0)) << size;
        EXPECT_EQ(LastBlock(size), std::nearbyint(size / 8.0 - 1)) << size;
    };
    for (int size = -100; size <= 8300; ++size)
        check(size);
    check(std::numeric_limits<int>::min());
    check(std::numeric_limits<int>::max());
}

}  // namespace
}  // namespace Tamber
