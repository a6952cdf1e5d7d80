#include <sstream>

#include "simulator/BoardBench.hpp"
#include "simulator/HexFile.hpp"

namespace Tamber::Simulator {
namespace {

TEST(HexFile, WritesTheRecordsOfEveryRegion) {
    DeviceMemory memory({3, 12, 8});
    memory.SetByte(0x4200, 0x12);
    std::ostringstream file;
    SaveHex(file, memory);
    EXPECT_EQ(file.str(),
              ":10000000FF0FFF0FFF0FFF0FFF0FFF0FFF0FFF0F80\n"
              ":08001000FF0FFF0FFF0FFF0FB0\n"
              ":10400000FFFFFFFFFFFFFFFFFFFFFFFFFFFFFF3F80\n"
              ":1042000012FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFAB\n"
              ":00000001FF\n");
}

TEST(HexFile, WhatIsSavedLoadsBackTheSame) {
    const DeviceShape shape{7, 8192, 256};
    DeviceMemory memory(shape);
    for (std::uint32_t address = 0; address < 0x4400; ++address)
        memory.SetByte(address, static_cast<std::uint8_t>(address * 31 + address / 256));
    std::stringstream file;
    SaveHex(file, memory);
    DeviceMemory loaded(shape);
    EXPECT_FALSE(LoadHex(file, loaded));
    for (std::uint32_t address = 0; address < 0x4400; ++address)
        ASSERT_EQ(loaded.ByteAt(address), memory.ByteAt(address)) << address;
}

TEST(HexFile, TakesEitherLineEndLowerCaseAndDataWithNoPlaceInTheDevice) {
    DeviceMemory memory({7, 16, 0});
    std::istringstream file(
        ":020000040000FA\r\n:02000000abcd86\r\n"
        ":1042000000000000000000000000000000000000AE\r\n:04001E00010203A434\n"
        ":00000001FF\nnot looked at\n");
    const auto fault = LoadHex(file, memory);
    EXPECT_FALSE(fault) << fault->line << fault->cause;
    EXPECT_EQ(memory.ByteAt(0), 0xAB);
    EXPECT_EQ(memory.ByteAt(1), 0xCD);
    EXPECT_EQ(memory.ByteAt(2), 0xFF) << "what the file does not hold stays";
    EXPECT_EQ(memory.ByteAt(0x1F), 0x02) << "the record runs past the end of the device";
    EXPECT_EQ(memory.ByteAt(0x20), 0xFF);
    EXPECT_EQ(memory.ByteAt(0x4200), 0xFF);
}

TEST(HexFile, BrokenFilesAreRefusedWholeWithTheirLineAndCause) {
    const std::string good = ":02000000ABCD86\n";
    const struct {
        std::string text, cause;
        int line;
    } broken[] = {
        {"", "no end record", 1},
        {good, "no end record", 2},
        {good + ":02000000ABCD87\n", "wrong checksum", 2},
        {good + "02000000ABCD86\n", "no colon at the start", 2},
        {good + "\n:00000001FF\n", "no colon at the start", 2},
        {good + good + ":02000000ABC\n", "something other than pairs of hexadecimal digits", 3},
        {good + ":0200000GABCD86\n", "something other than pairs of hexadecimal digits", 2},
        {good + ":\n", "not as many bytes as the record's count says", 2},
        {good + ":0000\n", "not as many bytes as the record's count says", 2},
        {good + ":03000000ABCD85\n", "not as many bytes as the record's count says", 2},
        {good + ":01000000ABCD87\n", "not as many bytes as the record's count says", 2},
        {good + ":020000040001F9\n", "an address above FFFF", 2},
    };
    for (const auto& file : broken) {
        DeviceMemory memory({7, 16, 0});
        std::istringstream text(file.text);
        const auto fault = LoadHex(text, memory);
        ASSERT_TRUE(fault) << file.text;
        EXPECT_EQ(fault->cause, file.cause) << file.text;
        EXPECT_EQ(fault->line, file.line) << file.text;
        EXPECT_EQ(memory.ByteAt(0), 0xFF) << "nothing of it is taken";
    }
}

}  // namespace
}  // namespace Tamber::Simulator
