#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FunctionBench.hpp"

namespace Tamber {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const DeviceRecord FourBlocks{"four blocks", 7, 32, 16, 1};

TEST(BlankCheckDevice, WholeSequenceOnWireAndScreen) {
    FunctionBench bench({"small", 7, 16, 16, 1});
    EXPECT_THAT(
        bench.Run(FunctionBlank),
        ElementsAre("progress 0", "cleared",  //
                    "line 0 Blank Checking Program Memory...", "progress 0", "> 01 52",
                    "> 04 00 00 00 01", "progress 50", "> 01 52", "> 04 00 10 00 01", "> 01 49",
                    "progress 100", "end 0 Blank Checking Program Memory...   OK!", "tick 100",  //
                    "line 1 Blank Checking EEPROM...", "progress 0", "> 01 52", "> 04 42 00 00 01",
                    "progress 50", "> 01 52", "> 04 42 10 00 01", "> 01 49", "progress 100",
                    "end 1 Blank Checking EEPROM...   OK!", "tick 100",  //
                    "line 2 Blank Checking Config...", "> 01 52", "> 04 40 00 00 01", "> 01 49",
                    "progress 100", "end 2 Blank Checking Config...   OK!"));
    EXPECT_FALSE(bench.run.ErrorFlag);
}

TEST(BlankCheckDevice, FirstWordThatIsNotBlank) {
    struct Case {
        std::uint32_t index;
        std::uint8_t value;
        std::string end;  // of the region it lies in; the others are blank
    };
    const Case cases[] = {
        {0x0024, 0xFE, "0 PM not blank at 0012"},
        {0x0025, 0x3E, "0 PM not blank at 0012"},
        {0x421E, 0x00, "1 EEPROM not blank at 000F"},
        {0x421F, 0x00, "1 Blank Checking EEPROM...   OK!"},  // a companion byte
        {0x4000, 0xFE, "2 Config. not blank at ID Locs "},
        {0x4006, 0xFE, "2 Config. not blank at ID Locs "},
        {0x4001, 0x00, "2 Blank Checking Config...   OK!"},  // high bytes of IDs
        {0x4008, 0x00, "2 Blank Checking Config...   OK!"},  // the words between
        {0x400E, 0xFE, "2 Config. not blank at CW "},
        {0x400F, 0x3E, "2 Config. not blank at CW "},
    };
    for (const auto& [index, value, end] : cases) {
        FunctionBench bench(FourBlocks);
        ASSERT_TRUE(bench.Socket().SetByte(index, value));
        auto ends = FunctionBench::Ends(bench.Run(FunctionBlank));
        ASSERT_EQ(ends.size(), 3U);
        EXPECT_THAT(ends, testing::Contains(end)) << index;
        EXPECT_EQ(std::ranges::count_if(ends, [](auto& line) { return line.ends_with("OK!"); }),
                  end.ends_with("OK!") ? 3 : 2);
        EXPECT_EQ(bench.run.ErrorFlag, !end.ends_with("OK!"));
    }
}

TEST(BlankCheckDevice, BlankWordFollowsTheTypeTheConfigurationDoesNot) {
    struct Case {
        std::int16_t type;
        std::uint8_t high;
        std::string end;
    };
    for (const auto& [type, high, end] : {Case{5, 0x0F, "0 Blank Checking Program Memory...   OK!"},
                                          Case{5, 0x3F, "0 PM not blank at 0000"},
                                          Case{6, 0x3F, "0 Blank Checking Program Memory...   OK!"},
                                          Case{6, 0x0F, "0 PM not blank at 0000"}}) {
        FunctionBench bench({"device", type, 8, 0, 1});
        for (std::uint32_t word = 0; word < 8; ++word)
            bench.Socket().SetByte(2 * word + 1, high);
        EXPECT_THAT(FunctionBench::Ends(bench.Run(FunctionBlank)),
                    ElementsAre(end, "1 Blank Checking Config...   OK!"));
    }
}

TEST(BlankCheckDevice, NotBlankClosesTheRegionAndReadsNoFurther) {
    FunctionBench bench(FourBlocks);
    bench.Socket().SetByte(0x0004, 0x00);
    EXPECT_THAT(
        bench.RunQuietly(FunctionBlank, {true, false, false, false}),
        ElementsAre("line 0 Blank Checking Program Memory...", "> 01 52", "> 04 00 00 00 01",
                    "> 01 49", "end 0 PM not blank at 0002", "tick 100"));
}

TEST(BlankCheckDevice, EitherBoxTestsBothPartsOfTheConfiguration) {
    for (const Regions& regions :
         {Regions{false, false, true, false}, Regions{false, false, false, true}}) {
        FunctionBench bench(FourBlocks);
        bench.Socket().SetByte(0x4002, 0x00);
        bench.Socket().SetByte(0x400F, 0x00);
        EXPECT_THAT(bench.RunQuietly(FunctionBlank, regions),
                    ElementsAre("line 0 Blank Checking Config...", "> 01 52", "> 04 40 00 00 01",
                                "> 01 49", "end 0 Config. not blank at ID Locs and CW"));
    }
    FunctionBench bench(FourBlocks);
    EXPECT_THAT(bench.RunQuietly(FunctionBlank, {false, false, false, false}), IsEmpty());
}

TEST(BlankCheckDevice, TimeOut) {
    struct Case {
        int request;
        std::string line;
    };
    for (const auto& [request, line] :
         {Case{1, "end 0 Blank Checking Program Memory...   Device Fault!"},
          Case{3, "end 0 Blank Checking Program Memory...   Device Fault!"},
          Case{6, "end 1 Blank Checking EEPROM...   Device Fault!"},
          Case{7, "end 2 Blank Checking Config...   Device Fault!"}}) {
        Simulator::FaultPlan faults;
        faults.silentFrom = request;
        FunctionBench bench(FourBlocks, faults);
        const auto record = bench.Run(FunctionBlank);
        EXPECT_EQ(record.back(), line);
        EXPECT_TRUE(record[record.size() - 4].starts_with("> 04"));
        EXPECT_FALSE(bench.run.ErrorFlag);
    }
}

}  // namespace
}  // namespace Tamber
