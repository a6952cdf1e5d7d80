#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FunctionBench.hpp"

namespace Tamber {
namespace {

using testing::ElementsAre;

// The socket holds a pattern, the image is blank.
void FillSocket(FunctionBench& bench) {
    bench.FillImage();
    bench.CopyImageToSocket();
    bench.image.ClearProgramMemory(bench.device.TypeCode);
    bench.image.ClearEeprom();
    bench.image.ClearConfiguration();
}

TEST(ReadDevice, WholeSequenceOnWireAndScreen) {
    FunctionBench bench(Small);
    EXPECT_THAT(
        bench.Run(FunctionRead),
        ElementsAre("progress 0", "cleared",  //
                    "line 0 Reading Program Memory...", "progress 0", "> 01 52", "> 04 00 00 00 01",
                    "progress 50", "> 01 52", "> 04 00 10 00 01", "> 01 49", "progress 100",
                    "end 0 Reading Program Memory...   OK!", "tick 100",  //
                    "line 0 Reading EEPROM...", "progress 0", "> 01 52", "> 04 42 00 00 01",
                    "progress 50", "> 01 52", "> 04 42 10 00 01", "> 01 49", "progress 100",
                    "end 0 Reading EEPROM...   OK!", "tick 100",  //
                    "> 01 52", "> 04 40 00 00 01", "> 01 49", "closes", "views PM EM ID CW"));
}

TEST(ReadDevice, EveryTickedRegionAndNothingElseReachesTheImage) {
    for (int ticked = 0; ticked < 16; ++ticked) {
        const Regions regions{(ticked & 1) != 0, (ticked & 2) != 0, (ticked & 4) != 0,
                              (ticked & 8) != 0};
        FunctionBench bench(Small);
        FillSocket(bench);
        const MemoryImage blank = bench.image;
        bench.Run(FunctionRead, regions);
        for (int index = 0; index < MemoryImage::Size; ++index) {
            const bool read = (regions.ProgramMemory && index < 32) ||
                              (regions.Eeprom && index >= 0x4200 && index < 0x4220) ||
                              (regions.IdLocations && index >= 0x4000 && index < 0x4008) ||
                              (regions.ConfigurationWord && (index == 0x400E || index == 0x400F));
            const int expected =
                read ? bench.Socket().ByteAt(static_cast<std::uint32_t>(index)) : blank.Byte(index);
            ASSERT_EQ(bench.image.Byte(index), expected) << index << " ticked " << ticked;
        }
    }
}

TEST(ReadDevice, ConfigurationAloneShowsNoText) {
    FunctionBench bench(Small);
    EXPECT_THAT(bench.RunQuietly(FunctionRead, {false, false, false, true}),
                ElementsAre("> 01 52", "> 04 40 00 00 01", "> 01 49", "closes", "views CW"));
}

TEST(ReadDevice, StreamIsTurnedBackIntoTheImagesLayout) {
    for (const std::int32_t words : {512, 1024}) {
        FunctionBench bench({"stream", 1, words, 0, 0});
        bench.FillImage();
        bench.CopyImageToSocket();
        MemoryImage expected = bench.image;
        bench.image.ClearProgramMemory(1);
        bench.image.ClearConfiguration();
        for (int index = 0x4008; index < 0x400E; ++index)
            expected.SetByte(index, 0xFF);  // not in the stream
        // The ticks are fixed; the ID locations and the configuration word come all the same.
        const auto wire = FunctionBench::Wire(bench.Run(FunctionRead, {true, false, false, false}));
        EXPECT_EQ(bench.image, expected);
        ASSERT_GE(wire.size(), 2U);
        EXPECT_EQ(wire[wire.size() - 2], words == 512 ? "04 04 00 00 01" : "04 08 00 00 01");
        EXPECT_EQ(wire.back(), "01 49");
    }
}

TEST(ReadDevice, TimeOutKeepsWhatWasStoredAndTheDialog) {
    struct Case {
        int request;
        std::string line;
    };
    for (const auto& [request, line] : {Case{1, "end 0 Reading Program Memory...   Device Fault!"},
                                        Case{2, "end 0 Reading Program Memory...   Device Fault!"},
                                        Case{4, "end 0 Reading EEPROM...   Device Fault!"},
                                        Case{5, "end 0 Reading EEPROM...   OK!   Device Fault!"}}) {
        Simulator::FaultPlan faults;
        faults.silentFrom = request;
        FunctionBench bench(Small, faults);
        FillSocket(bench);
        const auto record = bench.Run(FunctionRead);
        EXPECT_EQ(record.back(), line) << "the dialog stays, no view is made anew";
        EXPECT_EQ(record[record.size() - 2], "box [Device Error] Communication Error! (critical)");
        EXPECT_EQ(bench.image.Byte(0) == bench.Socket().ByteAt(0), request > 1);
        EXPECT_EQ(bench.image.Byte(0x10) == bench.Socket().ByteAt(0x10), request > 2);
    }
}

TEST(ReadDevice, RepliesOfEveryLengthLeaveTheRestOfTheImageAlone) {
    for (int promised = 0; promised < 256; ++promised)
        for (const std::size_t came : {17U, 18U, 64U, 300U}) {
            Simulator::FaultPlan faults;
            faults.alteredByte = {1, 0, static_cast<std::uint8_t>(promised)};
            faults.replyLength = {1, came};
            FunctionBench bench({"one block", 7, 8, 0, 1}, faults);
            FillSocket(bench);
            bench.Run(FunctionRead, {true, false, false, false});
            const int stored = std::clamp(promised - 1, 0, 16);
            for (int index = 0; index < 32; ++index)
                ASSERT_EQ(bench.image.Byte(index),
                          index < stored ? bench.Socket().ByteAt(static_cast<std::uint32_t>(index))
                                         : (index % 2 == 0 ? 0xFF : 0x3F))
                    << promised << " " << came << " " << index;
        }
}

}  // namespace
}  // namespace Tamber
