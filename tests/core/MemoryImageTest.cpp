#include <gtest/gtest.h>

#include "core/DeviceCatalogue.hpp"
#include "core/HexText.hpp"
#include "core/MemoryImage.hpp"

namespace Tamber {
namespace {

TEST(MemoryImage, EachClearBlanksItsRegionAndNothingElse) {
    constexpr std::uint8_t old = 0xA5;
    const auto expectCleared = [](const auto& clear, const auto& expected) {
        MemoryImage image;
        for (int index = 0; index <= 70'000; ++index)
            image.SetByte(index, old);
        clear(image);
        for (int index = 0; index <= 70'000; ++index)
            ASSERT_EQ(image.Byte(index), expected(index)) << index;
    };
    for (const auto type : std::initializer_list<std::int16_t>{1, 5, 6, 12})
        expectCleared(
            [&](MemoryImage& image) { image.ClearProgramMemory(type); },
            [&](int index) {
                return index >= 0x4000 ? old : index % 2 == 0 ? 0xFF : type <= 5 ? 0x0F : 0x3F;
            });
    expectCleared([](MemoryImage& image) { image.ClearEeprom(); },
                  [](int index) { return index >= 0x4200 && index <= 0x43FF ? 0xFF : old; });
    expectCleared(
        [](MemoryImage& image) { image.ClearConfiguration(); },
        [](int index) {
            return index == 0x400F ? 0x3F : index >= 0x4000 && index < 0x400F ? 0xFF : old;
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

TEST(HexText, WordsHaveFourDigitsOrMoreAndNumbersAsManyAsTheyNeed) {
    EXPECT_EQ(HexWord(0) + HexWord(0x1A) + HexWord(0xFFF) + HexWord(0x1000) + HexWord(0x1ABCDEF0),
              "0000001A0FFF10001ABCDEF0");
    EXPECT_EQ(HexNumber(0) + HexNumber(0x400) + HexNumber(0xFFFFFFFF), "0400FFFFFFFF");
}

}  // namespace
}  // namespace Tamber
