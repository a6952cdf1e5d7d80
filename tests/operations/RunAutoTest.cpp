#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FunctionBench.hpp"

namespace Tamber {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const DeviceRecord OneBlock{"one block", 7, 8, 0, 1};
const Regions ProgramMemoryOnly{true, false, false, false};

AutoSequence Series(std::initializer_list<std::int16_t> codes) {
    AutoSequence series;
    for (const std::int16_t code : codes)
        series.Entries[static_cast<std::size_t>(++series.AutoCount)] = code;
    return series;
}

TEST(RunAuto, SuccessfulSeriesEndsWithEmptyLines) {
    FunctionBench bench(OneBlock);
    bench.FillImage();
    bench.series = Series({FunctionErase, FunctionBlank, FunctionProgram, FunctionVerify});
    const auto record = bench.Run(FunctionAuto, ProgramMemoryOnly);
    EXPECT_THAT(FunctionBench::Ends(record), ElementsAre("0 Erasing Program Memory...   OK!",
                                                         "0 Blank Checking Program Memory...   OK!",
                                                         "0 Programming Program Memory...   OK!",
                                                         "0 Verifying Program Memory...   OK!"));
    EXPECT_EQ(record.back(), "cleared");
    EXPECT_FALSE(bench.run.ErrorFlag);
}

TEST(RunAuto, EraseIsFollowedByOneMorePeriodOfThePauseTimer) {
    FunctionBench bench(OneBlock);
    bench.series = Series({FunctionErase, FunctionErase});
    EXPECT_THAT(bench.RunQuietly(FunctionAuto, ProgramMemoryOnly),
                ElementsAre("line 0 Erasing Program Memory...", "> 01 45", "tick 1000",
                            "end 0 Erasing Program Memory...   OK!", "tick 100", "tick 100",
                            "line 0 Erasing Program Memory...", "> 01 45", "tick 100",
                            "end 0 Erasing Program Memory...   OK!", "tick 100", "tick 100"));
}

TEST(RunAuto, StopsAtAFailureInTheDataAndKeepsItsLines) {
    FunctionBench bench(OneBlock);
    bench.Socket().SetByte(0, 0x00);
    bench.series = Series({FunctionBlank, FunctionProgram, FunctionVerify});
    const auto record = bench.Run(FunctionAuto, ProgramMemoryOnly);
    EXPECT_THAT(FunctionBench::Ends(record), ElementsAre("0 PM not blank at 0000"));
    EXPECT_NE(record.back(), "cleared");
    EXPECT_TRUE(bench.run.ErrorFlag);
}

TEST(RunAuto, GoesOnAfterATimeOut) {
    Simulator::FaultPlan faults;
    faults.replyLength = {1, 0};
    FunctionBench bench(OneBlock, faults);
    bench.series = Series({FunctionProgram, FunctionVerify});
    EXPECT_THAT(FunctionBench::Ends(bench.Run(FunctionAuto, ProgramMemoryOnly)),
                ElementsAre("0 Programming Program Memory...   Device Fault!",
                            "0 Verifying Program Memory...   OK!"));
}

TEST(RunAuto, ReadInTheMiddleClosesTheDisplayAndTheRestRuns) {
    FunctionBench bench(OneBlock);
    bench.series = Series({FunctionVerify, FunctionRead, FunctionVerify});
    const auto record = bench.RunQuietly(FunctionAuto, ProgramMemoryOnly);
    const auto closes = std::ranges::find(record, "closes");
    ASSERT_NE(closes, record.end());
    EXPECT_EQ(*(closes + 1), "views PM");
    EXPECT_EQ(*(closes + 2), "line 0 Verifying Program Memory...");
}

TEST(RunAuto, EmptyNegativeAndForeignEntriesRunNothing) {
    for (const AutoSequence& series : {Series({}), AutoSequence{-3, {}}, Series({7, -1, 5, 100})}) {
        FunctionBench bench(OneBlock);
        bench.series = series;
        EXPECT_THAT(bench.RunQuietly(FunctionAuto), IsEmpty());
    }
}

TEST(RunAuto, ErrorOfAnEarlierRunIsForgotten) {
    FunctionBench bench(OneBlock);
    bench.Socket().SetByte(0, 0x00);
    bench.series = Series({FunctionBlank, FunctionErase});
    bench.Run(FunctionAuto, ProgramMemoryOnly);
    bench.Socket().EraseProgram();
    EXPECT_EQ(FunctionBench::Ends(bench.Run(FunctionAuto, ProgramMemoryOnly)).size(), 2U);
}

}  // namespace
}  // namespace Tamber
