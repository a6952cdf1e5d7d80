#include <limits>
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

TEST(HexSave, WhatIsSavedLoadsBackAndNoAddressComesTwice) {
    std::mt19937 random(20240229);
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    const std::map<int, int> programBytes{
        {least, 0}, {-1, 0},      {0, 0},         {1, 16},        {7, 16},        {8, 16},
        {12, 32},   {1024, 2048}, {8191, 0x4000}, {8192, 0x4000}, {8193, 0x4000}, {most, 0x4000}};
    for (const auto& [words, bytes] : programBytes) {
        MemoryImage image;
        MemoryImage loaded;
        for (int index = 0; index < MemoryImage::Size; ++index) {
            image.SetByte(index, static_cast<std::uint8_t>(random()));
            loaded.SetByte(index, 0xA5);
        }
        MemoryImage expected = loaded;
        expected.Store(0, image.Bytes(0, bytes));
        expected.Store(0x4000, image.Bytes(0x4000, 16));
        expected.Store(0x4200, image.Bytes(0x4200, 512));

        const TestFolder folder;
        ASSERT_TRUE(SaveHexFile(folder / "image.hex", image, words));
        ASSERT_TRUE(LoadHexFile(folder / "image.hex", loaded)) << words;
        EXPECT_TRUE(loaded == expected) << words;
        EXPECT_EQ(std::filesystem::file_size(folder / "image.hex"),
                  static_cast<std::size_t>(bytes / 16 + 1 + 32) * 45 + 13)
            << words;
    }
}

}  // namespace
}  // namespace Tamber
