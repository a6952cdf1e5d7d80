#include <gtest/gtest.h>

#include <algorithm>

#include "operations/DeviceFunctions.hpp"
#include "support/FunctionBench.hpp"

namespace Tamber {

namespace {

// The device holds a pattern, the image is blank.
void FillSocket(FunctionBench& bench, unsigned seed = 1) {
    bench.FillImage(seed);
    bench.CopyImageToSocket();
    bench.BlankImage();
}

int SocketByte(FunctionBench& bench, int index) {
    return bench.Socket().ByteAt(static_cast<std::uint32_t>(index));
}

// After a Read, what `read` names is in the image as in the device, and the rest is blank as
// before.
template <typename Read>
void ExpectRead(FunctionBench& bench, const Regions& ticked, const Read& read) {
    FillSocket(bench);
    const MemoryImage blank = bench.image;
    bench.Run(FunctionRead, ticked);
    for (int index = 0; index < MemoryImage::Size; ++index)
        ASSERT_EQ(bench.image.Byte(index),
                  read(index) ? SocketByte(bench, index) : blank.Byte(index))
            << index;
}

TEST(ReadDevice, EveryTickedRegionAndNothingElseReachesTheImage) {
    for (int ticked = 0; ticked < 16; ++ticked) {
        SCOPED_TRACE(ticked);
        const Regions regions{(ticked & 1) != 0, (ticked & 2) != 0, (ticked & 4) != 0,
                              (ticked & 8) != 0};
        FunctionBench bench({"small", 7, 16, 16, 1});
        ExpectRead(bench, regions, [&](int index) {
            return (regions.ProgramMemory && index < 32) ||
                   (regions.Eeprom && index >= 0x4200 && index < 0x4220) ||
                   (regions.IdLocations && index >= 0x4000 && index < 0x4008) ||
                   (regions.ConfigurationWord && (index == 0x400E || index == 0x400F));
        });
    }
}

TEST(ReadDevice, RepliesOfEveryLengthLeaveTheRestOfTheImageAlone) {
    for (int promised = 0; promised < 256; promised += promised < 18 ? 1 : 79)
        for (const std::size_t came : {17U, 18U, 300U}) {
            SCOPED_TRACE(std::to_string(promised) + " " + std::to_string(came));
            Simulator::FaultPlan faults;
            faults.AlteredByte = {1, 0, static_cast<std::uint8_t>(promised)};
            faults.ReplyLength = {1, came};
            FunctionBench bench({"one block", 7, 8, 0, 1}, faults);
            ExpectRead(bench, {true, false, false, false},
                       [&](int index) { return index < std::clamp(promised - 1, 0, 16); });
        }
}

// A device of each kind: 12-bit and 14-bit words, with and without EEPROM, and the stream.
const DeviceRecord Kinds[] = {
    {"12-bit", 2, 512, 0, 1},   {"12-bit with EEPROM", 3, 1024, 64, 1},
    {"14-bit", 12, 2048, 0, 1}, {"14-bit with EEPROM", 10, 8192, 256, 1},
    {"stream", 1, 1024, 0, 1},  {"short stream", 1, 512, 0, 1},
};

class WholeJob : public testing::TestWithParam<DeviceRecord> {};

TEST_P(WholeJob, EraseBlankProgramVerifyAndReadBack) {
    const DeviceRecord& device = GetParam();
    FunctionBench bench(device);
    FillSocket(bench, 1);
    bench.FillImage(2);
    bench.link.SelectDeviceType(device.TypeCode);
    for (const FunctionCode code :
         {FunctionErase, FunctionBlank, FunctionProgram, FunctionVerify}) {
        // Blank has no layout of its own for the stream: the configuration word comes first there.
        if (code == FunctionBlank && device.TypeCode == StreamTypeCode)
            continue;
        bench.Run(code);
        EXPECT_FALSE(bench.run.ErrorFlag || bench.run.DeviceFault) << code;
    }

    // The device holds the image byte for byte, and reads back as it.
    const MemoryImage written = bench.image;
    for (int index = 0; index < 2 * device.ProgramWords; ++index)
        ASSERT_EQ(SocketByte(bench, index), written.Byte(index));
    bench.BlankImage();
    for (int index = 0x4008; index < 0x400E; ++index)
        bench.image.SetByte(index, written.Byte(index));  // never read
    bench.Run(FunctionRead);
    EXPECT_EQ(bench.image, written);
}

INSTANTIATE_TEST_SUITE_P(Kinds, WholeJob, testing::ValuesIn(Kinds));

}  // namespace
}  // namespace Tamber
