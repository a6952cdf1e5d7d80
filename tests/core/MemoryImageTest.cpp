#include <gtest/gtest.h>

#include "core/DeviceCatalogue.hpp"
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
    EXPECT_EQ(image.Bytes(70'001, 0).size(), 0u);
    EXPECT_DEATH((void)image.Byte(70'001), "");
    EXPECT_DEATH(image.SetByte(-1, 0), "");
    EXPECT_DEATH(image.Store(70'000, two), "");
    EXPECT_DEATH((void)image.Block(70'001 - 15), "");
    EXPECT_DEATH((void)image.Bytes(0, -1), "");

    const DeviceCatalogue catalogue;
    EXPECT_EQ(catalogue.Record(50).Name, "");
    EXPECT_DEATH((void)catalogue.Record(51), "");
    EXPECT_DEATH((void)catalogue.Record(-1), "");
}

}  // namespace
}  // namespace Tamber
