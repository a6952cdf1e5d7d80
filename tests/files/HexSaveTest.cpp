#include <random>
#include <sstream>

#include "core/TestFolder.hpp"
#include "files/HexFile.hpp"
#include "files/HexSave.hpp"

namespace Tamber {
namespace {

// The image that the other tool was given, see tests/data/README.md.
MemoryImage PatternImage() {
    MemoryImage image;
    for (int index = 0; index < 0x4400; ++index)
        image.SetByte(index, static_cast<std::uint8_t>(index * 31 + (index >> 8) * 7));
    return image;
}

TEST(HexSave, WritesWhatAnotherToolWritesRecordByRecord) {
    for (const int words : {1024, 8192}) {
        const std::string name = std::to_string(words) + "-words.hex";
        std::istringstream theirs(
            FileText(std::filesystem::path(TEST_DATA) / "hex/saved-elsewhere" / name));
        std::string expected;
        // It puts an address record of 0 in front, and ends lines in line feeds.
        for (std::string line; std::getline(theirs, line);)
            if (line != ":020000040000FA")
                expected += line + "\r\n";
        ASSERT_EQ(HexFileText(PatternImage(), words), expected) << name;
    }
}

TEST(HexSave, ABlankImageIsWrittenInFullForADeviceWithoutProgramMemoryOrEeprom) {
    MemoryImage image;
    image.ClearProgramMemory(6);
    image.ClearEeprom();
    image.ClearConfiguration();
    const std::string text = HexFileText(image, 0);
    EXPECT_EQ(text.size(), (1 + 32) * 45u + 13u);
    EXPECT_TRUE(
        text.starts_with(":10400000FFFFFFFFFFFFFFFFFFFFFFFFFFFFFF3F80\r\n"
                         ":10420000FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFBE\r\n"))
        << text;
    EXPECT_TRUE(
        HexFileText(image, 9).starts_with(":10000000FF3FFF3FFF3FFF3FFF3FFF3FFF3FFF3F00\r\n"
                                          ":10001000FF3FFF3FFF3FFF3FFF3FFF3FFF3FFF3FF0\r\n"
                                          ":1040"));
}

TEST(HexSave, WhatIsSavedLoadsBackAndNoAddressComesTwice) {
    std::mt19937 random(20240229);
    const struct {
        int words, programBytes;
    } table[] = {{-1, 0},
                 {0, 0},
                 {1, 16},
                 {7, 16},
                 {8, 16},
                 {12, 32},
                 {1024, 2048},
                 {8191, 0x4000},
                 {8192, 0x4000},
                 {8193, 0x4000},
                 {32'768, 0x4000},
                 {2147483647, 0x4000},
                 {-2147483647 - 1, 0}};
    for (const auto& row : table) {
        MemoryImage image;
        MemoryImage loaded;
        for (int index = 0; index < MemoryImage::Size; ++index) {
            image.SetByte(index, static_cast<std::uint8_t>(random()));
            loaded.SetByte(index, 0xA5);
        }
        MemoryImage expected = loaded;
        expected.Store(0, image.Bytes(0, row.programBytes));
        expected.Store(0x4000, image.Bytes(0x4000, 16));
        expected.Store(0x4200, image.Bytes(0x4200, 512));

        const TestFolder folder;
        EXPECT_TRUE(SaveHexFile(folder / "image.hex", image, row.words));
        EXPECT_TRUE(LoadHexFile(folder / "image.hex", loaded)) << row.words;
        EXPECT_TRUE(loaded == expected) << row.words;
        EXPECT_EQ(std::filesystem::file_size(folder / "image.hex"),
                  static_cast<std::size_t>(row.programBytes / 16 + 1 + 32) * 45 + 13)
            << row.words;
    }
}

TEST(HexSave, ASaveThatFailsLeavesWhatWasThere) {
    const TestFolder folder;
    std::filesystem::create_directory(folder / "image.hex");
    EXPECT_EQ(SaveHexFile(folder / "image.hex", MemoryImage(), 8).error(), "Is a directory");
    EXPECT_EQ(SaveHexFile(folder / "none/image.hex", MemoryImage(), 8).error(),
              "No such file or directory");
    EXPECT_FALSE(SaveHexFile({}, MemoryImage(), 8));
    EXPECT_EQ(folder.Files().size(), 1u);
}

}  // namespace
}  // namespace Tamber
