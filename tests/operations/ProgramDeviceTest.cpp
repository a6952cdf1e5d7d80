#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FunctionBench.hpp"

namespace Tamber {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const DeviceRecord SmallWithoutEeprom{"small", 7, 16, 0, 1};

std::string DataFrame(const MemoryImage& image, int address, int count = 8) {
    const std::uint8_t head[] = {0x14, static_cast<std::uint8_t>(address / 256),
                                 static_cast<std::uint8_t>(address % 256), 0,
                                 static_cast<std::uint8_t>(count)};
    return "> " + HexBytes(head) + " " + HexBytes(image.Bytes(address, 16));
}

TEST(ProgramDevice, WholeSequenceOnWireAndScreen) {
    FunctionBench bench(Small);
    bench.FillImage();
    const MemoryImage& image = bench.image;
    EXPECT_THAT(
        bench.Run(FunctionProgram),
        ElementsAre("progress 0", "cleared",  //
                    "line 0 Programming Program Memory...", "> 01 57", "progress 0",
                    DataFrame(image, 0x0000), "progress 50", DataFrame(image, 0x0010), "> 01 57",
                    "> 01 49", "progress 100", "end 0 Programming Program Memory...   OK!",
                    "tick 1000",  //
                    "line 1 Programming EEPROM...", "> 01 57", "progress 0",
                    DataFrame(image, 0x4200), "progress 50", DataFrame(image, 0x4210), "> 01 57",
                    "> 01 49", "progress 100", "end 1 Programming EEPROM...   OK!", "tick 1000",  //
                    "line 2 Programming ID and Config...", "> 01 57", DataFrame(image, 0x4000),
                    "> 01 57", "> 01 49", "progress 100",
                    "end 2 Programming ID and Config...   OK!"));
    EXPECT_FALSE(bench.run.ErrorFlag);
}

TEST(ProgramDevice, OnlyTickedRegionsAreWritten) {
    struct Case {
        Regions regions;
        std::vector<std::string> ends;
        int configurationCount;  // 0: no such frame
    };
    const Case cases[] = {
        {{false, false, false, false}, {}, 0},
        {{true, false, false, false}, {"0 Programming Program Memory...   OK!"}, 0},
        {{false, true, false, false}, {"0 Programming EEPROM...   OK!"}, 0},
        {{false, false, true, false}, {"0 Programming ID and Config...   OK!"}, 4},
        {{false, false, false, true}, {"0 Programming ID and Config...   OK!"}, 4},
        {{false, false, true, true}, {"0 Programming ID and Config...   OK!"}, 8},
    };
    for (const auto& [regions, ends, count] : cases) {
        FunctionBench bench(Small);
        const auto record = bench.RunQuietly(FunctionProgram, regions);
        EXPECT_EQ(FunctionBench::Ends(record), ends);
        for (const int possible : {4, 8})
            EXPECT_EQ(std::ranges::count(record, DataFrame(bench.image, 0x4000, possible)),
                      possible == count ? 1 : 0);
    }
}

TEST(ProgramDevice, DeviceWithoutEepromHasNoEepromLineWhateverIsTicked) {
    FunctionBench bench(SmallWithoutEeprom);
    EXPECT_THAT(FunctionBench::Ends(bench.Run(FunctionProgram)),
                ElementsAre("0 Programming Program Memory...   OK!",
                            "1 Programming ID and Config...   OK!"));
}

TEST(ProgramDevice, RefusedBlockEndsItsRegionOnly) {
    struct Case {
        std::uint16_t block;
        std::uint8_t lowByte;
        std::vector<std::string> ends;
        int framesOfRegion;
    };
    const std::string pm = "0 Programming Program Memory...   OK!";
    const std::string em = "1 Programming EEPROM...   OK!";
    const std::string id = "2 Programming ID and Config...   OK!";
    const Case cases[] = {
        {0x0050, 0x5A, {"0 Program Error at 002D", em, id}, 6},
        {0x0010, 0x24, {"0 Program Error at 0012", em, id}, 2},
        {0x4200, 0x0A, {pm, "1 Program Error at 0005", id}, 1},
        {0x4000, 0x0E, {pm, em, "2 Program Error at 0007"}, 1},
        {0x4000, 0x02, {pm, em, "2 Program Error at 0001"}, 1},
    };
    for (const auto& [block, lowByte, ends, frames] : cases) {
        Simulator::FaultPlan faults;
        faults.refusedWrite = {block, lowByte};
        FunctionBench bench({"device", 7, 128, 64, 1}, faults);
        const auto record = bench.Run(FunctionProgram);
        EXPECT_EQ(FunctionBench::Ends(record), ends);
        EXPECT_TRUE(bench.run.ErrorFlag);
        const std::string head =
            "14 " + HexBytes(std::array{static_cast<std::uint8_t>(block / 256)});
        const auto wire = FunctionBench::Wire(record);
        EXPECT_EQ(std::ranges::count_if(wire, [&](const auto& f) { return f.starts_with(head); }),
                  frames)
            << "no block of the region after the refused one";
        EXPECT_EQ(std::ranges::count(wire, "01 57"), 6) << "every region is opened and closed";
        EXPECT_EQ(std::ranges::count(wire, "01 49"), 3);
    }
}

TEST(ProgramDevice, ProgressStandsStillAtARefusedBlock) {
    Simulator::FaultPlan faults;
    faults.refusedWrite = {0x0010, 0x10};
    FunctionBench bench(SmallWithoutEeprom, faults);
    EXPECT_THAT(
        bench.Run(FunctionProgram, {true, false, false, false}),
        ElementsAreArray(
            {std::string("progress 0"), std::string("cleared"),
             std::string("line 0 Programming Program Memory..."), std::string("> 01 57"),
             std::string("progress 0"), DataFrame(bench.image, 0), std::string("progress 50"),
             DataFrame(bench.image, 0x10), std::string("> 01 57"), std::string("> 01 49"),
             std::string("end 0 Program Error at 0008"), std::string("tick 1000")}));
}

TEST(ProgramDevice, TimeOutEndsEverythingAtOnce) {
    struct Case {
        int request;  // awaited replies: 2 program blocks, 2 EEPROM blocks, 1 configuration
        std::string line;
    };
    const Case cases[] = {
        {1, "end 0 Programming Program Memory...   Device Fault!"},
        {2, "end 0 Programming Program Memory...   Device Fault!"},
        {4, "end 1 Programming EEPROM...   Device Fault!"},
        {5, "end 2 Programming ID and Config...   Device Fault!"},
    };
    for (const auto& [request, line] : cases) {
        Simulator::FaultPlan faults;
        faults.silentFrom = request;
        FunctionBench bench(Small, faults);
        const auto record = bench.Run(FunctionProgram);
        const auto end = record.size();
        ASSERT_GE(end, 4U);
        EXPECT_TRUE(record[end - 4].starts_with("> 14")) << "nothing is sent after the time-out";
        EXPECT_EQ(record[end - 3], "tick 1000");
        EXPECT_EQ(record[end - 2], "box [Device Error] Communication Error! (critical)");
        EXPECT_EQ(record[end - 1], line);
        EXPECT_FALSE(bench.run.ErrorFlag);
    }
}

TEST(ProgramDevice, RunAfterAFaultStartsAfresh) {
    Simulator::FaultPlan faults;
    faults.replyLength = {2, 0};
    FunctionBench bench(Small, faults);
    bench.FillImage();
    bench.Run(FunctionProgram);
    EXPECT_THAT(
        FunctionBench::Ends(bench.Run(FunctionProgram)),
        ElementsAre("0 Programming Program Memory...   OK!", "1 Programming EEPROM...   OK!",
                    "2 Programming ID and Config...   OK!"));
}

TEST(ProgramDevice, OddAndImpossibleSizes) {
    struct Case {
        std::int32_t words;
        std::int16_t eeprom;
        int programFrames;
        int eepromFrames;
    };
    // Block counts and last block numbers round by themselves, halves to even; what does not fit
    // the image is not sent.
    for (const auto& [words, eeprom, programFrames, eepromFrames] :
         {Case{12, 0, 1, 0}, Case{20, 0, 3, 0}, Case{4, 4, 1, 1}, Case{3, 2, 0, 0},
          Case{0, 0, 0, 0}, Case{-8, -8, 0, 0}, Case{9'000, 300, 1024, 32}}) {
        FunctionBench bench({"odd", 7, words, eeprom, 1});
        const auto wire =
            FunctionBench::Wire(bench.Run(FunctionProgram, {true, true, false, false}));
        const auto countFrames = [&](bool ofEeprom) {
            return std::ranges::count_if(wire, [&](const std::string& frame) {
                return frame.starts_with("14") && (frame.substr(3, 2) >= "42") == ofEeprom;
            });
        };
        EXPECT_EQ(countFrames(false), programFrames) << words;
        EXPECT_EQ(countFrames(true), eepromFrames) << eeprom;
    }
}

}  // namespace
}  // namespace Tamber
