#include "simulator/BoardBench.hpp"
#include "simulator/DeviceFile.hpp"

namespace Tamber::Simulator {
namespace {

TEST(DeviceFile, WhatIsSavedLoadsBackTheSame) {
    for (const DeviceShape shape : {DeviceShape{7, 8192, 256}, DeviceShape{3, 13, 7}}) {
        DeviceMemory memory(shape);
        for (std::uint32_t address = 0; address < DeviceMemory::EndAddress; ++address)
            memory.SetByte(address, static_cast<std::uint8_t>(address * 31 + address / 256));
        DeviceMemory loaded(shape);
        EXPECT_TRUE(LoadDevice(DeviceText(memory), loaded));
        for (std::uint32_t address = 0; address < 0x10000; ++address)
            ASSERT_EQ(loaded.ByteAt(address), memory.ByteAt(address)) << address;
    }
}

TEST(DeviceFile, BytesWithNoPlaceInTheDeviceArePassedOver) {
    DeviceMemory memory({7, 16, 0});
    EXPECT_TRUE(
        LoadDevice(":020000040000FA\r\n:02000000abcd86\r\n"
                   ":1042000000000000000000000000000000000000AE\r\n:04001E00010203A434\n"
                   ":00000001FF\nnot looked at\n",
                   memory));
    EXPECT_EQ(memory.ByteAt(0), 0xAB);
    EXPECT_EQ(memory.ByteAt(1), 0xCD);
    EXPECT_EQ(memory.ByteAt(2), 0xFF) << "what the file does not hold stays";
    EXPECT_EQ(memory.ByteAt(0x1F), 0x02) << "the record runs past the end of the device";
    EXPECT_EQ(memory.ByteAt(0x20), 0xFF);
    EXPECT_EQ(memory.ByteAt(0x4200), 0xFF);
}

TEST(DeviceFile, BrokenFilesAreRefusedWholeWithTheirLineAndCause) {
    const std::string good = ":02000000ABCD86\n";
    const std::string longRecord = ":34000000" + std::string(104, '0') + "CC\n";
    const struct {
        std::string text, cause;
        int line;
    } broken[] = {
        {"", "no end record", 1},
        {good, "no end record", 2},
        {good + ":02000000ABCD87\n:00000001FF\n", "wrong checksum", 2},
        {good + "\n:00000001FF\n", "no record with an address", 2},
        {good + longRecord + ":00000001FF\n", "too many bytes", 2},
        {good + good + ":020000040001F9\n:00000001FF\n", "an address above FFFF", 3},
        {good + ":020000021000EC\n:00000001FF\n", "an address above FFFF", 2},
    };
    for (const auto& file : broken) {
        DeviceMemory memory({7, 16, 0});
        const auto loaded = LoadDevice(file.text, memory);
        ASSERT_FALSE(loaded) << file.text;
        EXPECT_EQ(loaded.error().Cause, file.cause) << file.text;
        EXPECT_EQ(loaded.error().Line, file.line) << file.text;
        EXPECT_EQ(memory.ByteAt(0), 0xFF) << "nothing of it is taken";
    }
}

}  // namespace
}  // namespace Tamber::Simulator
