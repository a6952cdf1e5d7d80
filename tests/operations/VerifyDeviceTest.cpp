#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FunctionBench.hpp"

namespace Tamber {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const DeviceRecord Stream{"stream", 1, 512, 0, 0};

std::unique_ptr<FunctionBench> EqualBench(const DeviceRecord& device,
                                          Simulator::FaultPlan faults = {}) {
    auto bench = std::make_unique<FunctionBench>(device, faults);
    bench->FillImage();
    bench->CopyImageToSocket();
    return bench;
}

void Alter(FunctionBench& bench, std::uint32_t index) {
    bench.Socket().SetByte(index, bench.Socket().ByteAt(index) ^ 0x01);
}

TEST(VerifyDevice, WholeSequenceOnWireAndScreen) {
    const auto bench = EqualBench(Small);
    EXPECT_THAT(
        bench->Run(FunctionVerify),
        ElementsAre("progress 0", "cleared",  //
                    "line 0 Verifying Program Memory...", "progress 0", "> 01 52",
                    "> 04 00 00 00 01", "progress 50", "> 01 52", "> 04 00 10 00 01", "> 01 49",
                    "progress 100", "end 0 Verifying Program Memory...   OK!", "tick 100",  //
                    "line 1 Verifying EEPROM...", "progress 0", "> 01 52", "> 04 42 00 00 01",
                    "progress 50", "> 01 52", "> 04 42 10 00 01", "> 01 49", "progress 100",
                    "end 1 Verifying EEPROM...   OK!", "tick 100",  //
                    "> 01 52", "> 04 40 00 00 01", "> 01 49", "end 2 Verifying ID Locs...   OK!",
                    "tick 100", "> 01 49", "end 3 Verifying Conig Word...   OK!"));
    EXPECT_FALSE(bench->run.ErrorFlag);
}

TEST(VerifyDevice, FirstDifferenceOfARegionByItsOwnAddress) {
    struct Case {
        std::vector<std::uint32_t> altered;
        std::vector<std::string> ends;
    };
    const std::string pm = "0 Verifying Program Memory...   OK!";
    const std::string em = "1 Verifying EEPROM...   OK!";
    const std::string id = "2 Verifying ID Locs...   OK!";
    const std::string cw = "3 Verifying Conig Word...   OK!";
    const Case cases[] = {
        {{0x0010, 0x0018}, {"0 Verify Error at 0010", em, id, cw}},
        {{0x0001}, {"0 Verify Error at 0001", em, id, cw}},
        {{0x4212}, {pm, "1 Verify Error at 0012", id, cw}},
        {{0x4213}, {pm, em, id, cw}},  // companion bytes of EEPROM are not compared
        {{0x4007}, {pm, em, "2 Verify Error at ID Locs", cw}},
        {{0x4008, 0x400D}, {pm, em, id, cw}},
        {{0x400E}, {pm, em, id, "3 Verify Error at Config. Word"}},
        {{0x400F}, {pm, em, id, "3 Verify Error at Config. Word"}},
    };
    for (const auto& [altered, ends] : cases) {
        const auto bench = EqualBench(Small);
        for (const std::uint32_t index : altered)
            Alter(*bench, index);
        EXPECT_EQ(FunctionBench::Ends(bench->Run(FunctionVerify)), ends);
        EXPECT_EQ(bench->run.ErrorFlag, ends != std::vector({pm, em, id, cw}));
    }
}

TEST(VerifyDevice, DifferenceClosesTheRegionAndReadsNoFurther) {
    const auto bench = EqualBench(Small);
    Alter(*bench, 0x0002);
    EXPECT_THAT(bench->Run(FunctionVerify, {true, false, false, false}),
                ElementsAre("progress 0", "cleared", "line 0 Verifying Program Memory...",
                            "progress 0", "> 01 52", "> 04 00 00 00 01", "> 01 49",
                            "end 0 Verify Error at 0002", "tick 100"));
}

TEST(VerifyDevice, BoxesAloneAndNone) {
    const auto bench = EqualBench(Small);
    EXPECT_THAT(bench->RunQuietly(FunctionVerify, {false, false, false, false}), IsEmpty());
    EXPECT_THAT(bench->RunQuietly(FunctionVerify, {false, false, true, false}),
                ElementsAre("> 01 52", "> 04 40 00 00 01", "> 01 49",
                            "end 0 Verifying ID Locs...   OK!", "tick 100"));
    EXPECT_THAT(bench->RunQuietly(FunctionVerify, {false, false, false, true}),
                ElementsAre("> 01 52", "> 04 40 00 00 01", "> 01 49",
                            "end 0 Verifying Conig Word...   OK!"));
}

TEST(VerifyDevice, ShortCountComparesLess) {
    for (const std::uint8_t count : std::initializer_list<std::uint8_t>{0, 1, 9}) {
        Simulator::FaultPlan faults;
        faults.alteredByte = {1, 0, count};
        const auto bench = EqualBench({"one block", 7, 8, 0, 1}, faults);
        Alter(*bench, 0x0008);
        EXPECT_THAT(FunctionBench::Ends(bench->Run(FunctionVerify, {true, false, false, false})),
                    ElementsAre("0 Verifying Program Memory...   OK!"));
    }
}

TEST(VerifyDevice, TimeOutLeavesTheRegionOpen) {
    struct Case {
        int request;
        std::string line;
    };
    for (const auto& [request, line] :
         {Case{1, "end 0 Verifying Program Memory...   Device Fault!"},
          Case{2, "end 0 Verifying Program Memory...   Device Fault!"},
          Case{4, "end 1 Verifying EEPROM...   Device Fault!"},
          Case{5, "end 2    Device Fault!"}}) {
        Simulator::FaultPlan faults;
        faults.silentFrom = request;
        const auto bench = EqualBench(Small, faults);
        const auto record = bench->Run(FunctionVerify);
        EXPECT_TRUE(record[record.size() - 4].starts_with("> 04"));
        EXPECT_EQ(record[record.size() - 2], "box [Device Error] Communication Error! (critical)");
        EXPECT_EQ(record.back(), line);
        EXPECT_FALSE(bench->run.ErrorFlag);
    }
}

TEST(VerifyDevice, OddSizesCountBlocksByTheRoundedQuotient) {
    struct Case {
        std::int32_t words;
        int requests;
    };
    for (const auto& [words, requests] :
         {Case{4, 0}, Case{12, 2}, Case{20, 2}, Case{0, 0}, Case{9'000, 1024}}) {
        const auto bench = EqualBench({"odd", 7, words, 0, 1});
        const auto wire =
            FunctionBench::Wire(bench->Run(FunctionVerify, {true, false, false, false}));
        EXPECT_EQ(std::ranges::count(wire, "01 52"), requests) << words;
    }
}

TEST(VerifyStream, OnePassOverConfigurationProgramAndIds) {
    const auto bench = EqualBench(Stream);
    const auto record = bench->RunQuietly(FunctionVerify, {false, false, false, false});
    EXPECT_THAT(FunctionBench::Ends(record),
                ElementsAre("0 Verifying CW...   OK!", "1 Verifying Program Memory...   OK!",
                            "2 Verifying ID Locs...   OK!"));
    const auto wire = FunctionBench::Wire(record);
    EXPECT_EQ(wire.size(), 2U * 65 + 1);
    EXPECT_EQ(wire[wire.size() - 2], "04 04 00 00 01");
    EXPECT_EQ(record.back(), "> 01 49") << "closed last, with no pause behind it";
}

TEST(VerifyStream, Differences) {
    struct Case {
        std::vector<std::uint32_t> altered;
        std::vector<std::string> ends;
    };
    const std::string cw = "0 Verifying CW...   OK!";
    const std::string pm = "1 Verifying Program Memory...   OK!";
    const std::string id = "2 Verifying ID Locs...   OK!";
    const Case cases[] = {
        {{0x400E}, {"0 Verify Error at CW", pm, id}},
        {{0x0000, 0x0200}, {cw, "1 Verify Error at 0000", id}},
        // Words 7, 15, ... stand in bytes 1 and 2 of the next block and are not looked at, but for
        // the last of the device.
        {{0x000E}, {cw, pm, id}},
        {{0x03FE}, {cw, "1 Verify Error at 03FE", id}},
        {{0x0100, 0x03FE}, {cw, "1 Verify Error at 0100", id}},
        {{0x4000}, {cw, pm, "2 Verify Error at 0400"}},
        {{0x4007}, {cw, pm, "2 Verify Error at 0407"}},
    };
    for (const auto& [altered, ends] : cases) {
        const auto bench = EqualBench(Stream);
        for (const std::uint32_t index : altered)
            Alter(*bench, index);
        EXPECT_EQ(FunctionBench::Ends(bench->Run(FunctionVerify)), ends);
        EXPECT_EQ(bench->run.ErrorFlag, ends != std::vector({cw, pm, id}));
    }
}

TEST(VerifyStream, TimeOut) {
    Simulator::FaultPlan faults;
    faults.silentFrom = 65;
    const auto bench = EqualBench(Stream, faults);
    EXPECT_EQ(bench->Run(FunctionVerify).back(),
              "end 1 Verifying Program Memory...   Device Fault!");
}

}  // namespace
}  // namespace Tamber
