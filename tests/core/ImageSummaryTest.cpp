#include <gtest/gtest.h>

#include "core/ImageSummary.hpp"

namespace Tamber {
namespace {

TEST(ImageSummary, ChecksumTakesAsManyBytesAsTheDeviceHasWords) {
    MemoryImage image;
    image.ClearProgramMemory(7);
    EXPECT_EQ(ProgramChecksum(image, 1024), 0x7C00U);
    image.SetByte(1023, 0x40);
    EXPECT_EQ(ProgramChecksum(image, 1024), 0x7C01U);
    image.SetByte(1024, 0x00);
    EXPECT_EQ(ProgramChecksum(image, 1024), 0x7C01U);
    EXPECT_EQ(ProgramChecksum(image, 0), 0U);
    for (int index = 0; index < 8192; ++index)
        image.SetByte(index, 0xFF);
    EXPECT_EQ(ProgramChecksum(image, 8192), 8192U * 0xFF % 65536);
}

TEST(ImageSummary, Configuration) {
    MemoryImage image;
    image.ClearConfiguration();
    EXPECT_EQ(IdLocationsText(image), "FFFFFFFF");
    EXPECT_EQ(ConfigurationWordText(image), "3FFF");
    for (int index = 0; index < 16; ++index)
        image.SetByte(0x4000 + index, static_cast<std::uint8_t>(0x10 + index));
    EXPECT_EQ(IdLocationsText(image), "10121416");
    EXPECT_EQ(ConfigurationWordText(image), "1F1E");
}

}  // namespace
}  // namespace Tamber
