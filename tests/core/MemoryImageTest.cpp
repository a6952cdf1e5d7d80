#include <gtest/gtest.h>

#include <cctype>

#include "core/DeviceCatalogue.hpp"
#include "core/HexText.hpp"
#include "core/MemoryImage.hpp"

namespace Tamber {
namespace {

constexpr std::uint8_t Old = 0xA5;

template <typename Clear, typename Expected>
void ExpectCleared(const char* name, const Clear& clear, const Expected& expected) {
    MemoryImage image;
    for (int index = 0; index <= 70'000; ++index) {
        ASSERT_EQ(image.Byte(index), 0) << "a new image is all zero";
        image.SetByte(index, Old);
    }
    clear(image);
    for (int index = 0; index <= 70'000; ++index)
        ASSERT_EQ(image.Byte(index), expected(index)) << name << " at " << index;
}

TEST(MemoryImage, EachClearBlanksItsRegionAndNothingElse) {
    for (const auto type : std::initializer_list<std::int16_t>{1, 5, 6, 12})
        ExpectCleared(
            "program memory", [&](MemoryImage& image) { image.ClearProgramMemory(type); },
            [&](int index) {
                return index >= 0x4000 ? Old : index % 2 == 0 ? 0xFF : type <= 5 ? 0x0F : 0x3F;
            });
    ExpectCleared(
        "EEPROM", [](MemoryImage& image) { image.ClearEeprom(); },
        [](int index) { return index >= 0x4200 && index <= 0x43FF ? 0xFF : Old; });
    ExpectCleared(
        "configuration", [](MemoryImage& image) { image.ClearConfiguration(); },
        [](int index) {
            return index == 0x400F ? 0x3F : index >= 0x4000 && index < 0x400F ? 0xFF : Old;
        });
}

TEST(MemoryImageDeathTest, AnIndexOutsideImageOrCatalogueEndsTheProgram) {
    MemoryImage image;
    const std::uint8_t two[2] = {1, 2};
    image.Store(69'999, two);
    EXPECT_EQ(image.Byte(70'000), 2);
    EXPECT_DEATH((void)image.Byte(70'001), "");
    EXPECT_DEATH(image.SetByte(-1, 0), "");
    EXPECT_DEATH(image.Store(70'000, two), "");
    EXPECT_DEATH((void)image.Block(70'001 - 15), "");
    EXPECT_DEATH((void)DeviceCatalogue().Record(51), "");
}

TEST(HexText, WordsHaveFourDigitsOrMoreBytesTwoAndDigitsReadBackInEitherCase) {
    EXPECT_EQ(HexWord(0) + HexWord(0x1A) + HexWord(0xFFF) + HexWord(0x1000) + HexWord(0x1ABCDEF0),
              "0000001A0FFF10001ABCDEF0");
    EXPECT_EQ(HexNumber(0) + HexNumber(0x400) + HexNumber(0xFFFFFFFF), "0400FFFFFFFF");
    for (int value = 0; value < 256; ++value) {
        EXPECT_EQ("00" + HexByte(static_cast<std::uint8_t>(value)),
                  HexWord(static_cast<std::uint32_t>(value)));
        const std::string digit(1, static_cast<char>(value));
        EXPECT_EQ(HexDigitValue(digit[0]),
                  std::isxdigit(value) ? std::stoi(digit, nullptr, 16) : -1)
            << value;
    }
}

}  // namespace
}  // namespace Tamber
