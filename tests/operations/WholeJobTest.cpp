#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FunctionBench.hpp"

namespace Tamber {

void PrintTo(const DeviceRecord& device, std::ostream* out) {
    *out << device.Name;
}

namespace {

// A device of each kind: 12-bit and 14-bit words, with and without EEPROM, and the stream.
const DeviceRecord Kinds[] = {
    {"12-bit", 2, 512, 0, 1},   {"12-bit with EEPROM", 3, 1024, 64, 1},
    {"14-bit", 12, 2048, 0, 1}, {"14-bit with EEPROM", 10, 8192, 256, 1},
    {"stream", 1, 1024, 0, 1},
};

class WholeJob : public testing::TestWithParam<DeviceRecord> {};

TEST_P(WholeJob, EraseBlankProgramVerifyAndReadBack) {
    FunctionBench bench(GetParam());
    bench.FillImage(static_cast<unsigned>(GetParam().ProgramWords));
    bench.CopyImageToSocket();
    bench.FillImage(static_cast<unsigned>(GetParam().ProgramWords) + 1);
    bench.run.TellDeviceType();
    for (const FunctionCode code :
         {FunctionErase, FunctionBlank, FunctionProgram, FunctionVerify}) {
        // Blank has no layout of its own for the stream: the configuration word stands first there.
        if (code == FunctionBlank && GetParam().TypeCode == StreamTypeCode)
            continue;
        for (const std::string& end : FunctionBench::Ends(bench.Run(code)))
            EXPECT_TRUE(end.ends_with("   OK!")) << end;
        EXPECT_FALSE(bench.run.ErrorFlag);
    }

    // The device holds the image byte for byte, and reads back as it.
    const MemoryImage written = bench.image;
    const int programBytes = 2 * GetParam().ProgramWords;
    for (int index = 0; index < programBytes; ++index)
        ASSERT_EQ(bench.Socket().ByteAt(static_cast<std::uint32_t>(index)), written.Byte(index));
    bench.image.ClearProgramMemory(GetParam().TypeCode);
    bench.image.ClearEeprom();
    for (int index = 0x4000; index < 0x4008; ++index)
        bench.image.SetByte(index, 0);
    bench.image.SetByte(MemoryImage::ConfigurationWord, 0);
    bench.Run(FunctionRead);
    EXPECT_EQ(bench.image, written);
}

INSTANTIATE_TEST_SUITE_P(Kinds, WholeJob, testing::ValuesIn(Kinds));

}  // namespace
}  // namespace Tamber
