#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FunctionBench.hpp"

namespace Tamber {
namespace {

using testing::ElementsAre;

TEST(EraseDevice, WholeSequenceWaitsALongPeriodOnceInADialogsLife) {
    FunctionBench bench(Small);
    EXPECT_THAT(bench.Run(FunctionErase),
                ElementsAre("progress 0", "cleared",  //
                            "progress 0", "line 0 Erasing Program Memory...", "> 01 45",
                            "tick 1000", "progress 100", "end 0 Erasing Program Memory...   OK!",
                            "tick 100",  //
                            "progress 0", "line 1 Erasing EEPROM...", "> 01 46", "tick 100",
                            "progress 100", "end 1 Erasing EEPROM...   OK!", "tick 100",  //
                            "progress 0", "line 2 Erasing ID Locs...", "> 01 47", "tick 100",
                            "progress 100", "end 2 Erasing ID Locs...   OK!", "tick 100",  //
                            "progress 0", "line 3 Erasing Config Word...", "> 01 48", "tick 100",
                            "progress 100", "end 3 Erasing Config Word...   OK!", "tick 100"));
    const auto again = bench.Run(FunctionErase);
    EXPECT_EQ(std::ranges::count(again, "tick 1000"), 0);
    EXPECT_FALSE(bench.run.ErrorFlag);
}

TEST(EraseDevice, OnlyTickedRegionsOnTheLinesThatAreFree) {
    struct Case {
        DeviceRecord device;
        Regions regions;
        std::vector<std::string> record;
    };
    const DeviceRecord withoutEeprom{"small", 7, 16, 0, 1};
    const Case cases[] = {
        {Small, {false, false, false, false}, {}},
        {Small,
         {false, false, false, true},
         {"line 0 Erasing Config Word...", "> 01 48", "tick 1000",
          "end 0 Erasing Config Word...   OK!", "tick 100"}},
        {withoutEeprom,
         {false, true, true, false},
         {"line 0 Erasing ID Locs...", "> 01 47", "tick 1000", "end 0 Erasing ID Locs...   OK!",
          "tick 100"}},
    };
    for (const auto& [device, regions, record] : cases)
        EXPECT_EQ(FunctionBench(device).RunQuietly(FunctionErase, regions), record);
}

TEST(EraseDevice, DeviceThatCannotBeErasedShowsOnlyABox) {
    FunctionBench bench({"otp", 6, 16, 0, 0});
    EXPECT_THAT(bench.RunQuietly(FunctionErase),
                ElementsAre("box [Tamber] Erase Function Not Available!"));
    EXPECT_FALSE(bench.run.ErrorFlag);
}

}  // namespace
}  // namespace Tamber
