#include <gtest/gtest.h>

#include "ui/DumpText.hpp"

namespace Tamber {
namespace {

TEST(DumpText, Headings) {
    EXPECT_EQ(ProgramDumpHeader(), "ADDR                   HEX                    ASCII\r\n");
    EXPECT_EQ(EepromDumpHeader(),
              "ADDR                       HEX                            ASCII\r\n");
}

TEST(DumpText, ProgramRows) {
    MemoryImage image;
    image.ClearProgramMemory(7);
    image.SetByte(0, 0x41);
    image.SetByte(1, 0x28);
    for (int word = 1; word < 8; ++word)
        image.SetByte(2 * word, std::array<std::uint8_t, 8>{0, 0x1F, 0x20, 0x7E, 0x7F, 0x80, 0xFF,
                                                            0}[static_cast<std::size_t>(word - 1)]);
    const std::string dump = ProgramDump(image, 0);
    EXPECT_EQ(dump.substr(0, 66),
              "0000=2841 3F00 3F1F 3F20 3F7E 3F7F 3F80 3FFF A.. ~\x7F..\r\n"
              "0008=3FFF 3");
    EXPECT_EQ(dump.size(), 16U * 55);
}

TEST(DumpText, ProgramRowsStopAtTheEndOfTheRegion) {
    MemoryImage image;
    EXPECT_EQ(ProgramDump(image, 1008).substr(15 * 55, 5), "1FF8=");
    EXPECT_EQ(ProgramDump(image, 1020).size(), 4U * 55);
    EXPECT_TRUE(ProgramDump(image, 5000).empty());
    EXPECT_EQ(ProgramDump(image, -3).substr(0, 5), "0000=");
}

TEST(DumpText, LastPage) {
    struct Case {
        int words;
        int topRow;
    };
    for (const auto& [words, topRow] :
         {Case{8192, 1008}, Case{1024, 112}, Case{128, 0}, Case{127, 0}, Case{132, 0}, Case{140, 2},
          Case{0, 0}, Case{-1, 0}, Case{100'000, 1008}})
        EXPECT_EQ(ProgramDumpTopRowMax(words), topRow) << words;
}

TEST(DumpText, EepromRowsSkipTheCompanionBytes) {
    MemoryImage image;
    image.ClearEeprom();
    image.SetByte(0x4200, 'H');
    image.SetByte(0x4201, 'x');
    image.SetByte(0x421E, 'i');
    image.SetByte(0x4220, 0x05);
    EXPECT_EQ(EepromDump(image, 32),
              "0000=48 FF FF FF FF FF FF FF FF FF FF FF FF FF FF 69 H..............i\r\n"
              "0010=05 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF ................\r\n");
    EXPECT_EQ(EepromDump(image, 0), "");
    EXPECT_EQ(EepromDump(image, -16), "");
    EXPECT_EQ(EepromDump(image, 32'000).size(), 16U * 71) << "the region has no more";
}

}  // namespace
}  // namespace Tamber
