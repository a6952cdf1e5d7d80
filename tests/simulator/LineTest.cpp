#include "simulator/BoardBench.hpp"
#include "simulator/Faults.hpp"
#include "simulator/PacedLine.hpp"

namespace Tamber::Simulator {
namespace {

// Advances the clock from due time to due time until nothing is under way; returns the time at
// which each reply byte came.
std::vector<std::int64_t> Arrivals(BoardLine& line, HandClock& clock, Bytes& replies) {
    std::vector<std::int64_t> times;
    while (const auto due = line.NextDue()) {
        clock.now = std::max(clock.now, *due);
        line.Take(replies);
        times.resize(replies.size(), clock.now.count());
    }
    return times;
}

struct LineTest : testing::Test {
    HandClock clock;
    BoardEngine board{clock.Reading(), {}};
    PacedLine line{board, clock.Reading(), 10'000};  // a millisecond a byte
    Bytes replies;
};

TEST_F(LineTest, EveryByteTakesTenBitTimesInBothDirections) {
    PacedLine fast(board, clock.Reading(), 57600);
    fast.Receive(ReadRequest(0));
    const auto times = Arrivals(fast, clock, replies);
    ASSERT_EQ(times.size(), 17u);
    EXPECT_EQ(replies.front(), 17);
    // Seven bytes to the board, then one after the other back; 10 / 57600 s each, rounded up.
    for (std::int64_t i = 0; i < 17; ++i)
        EXPECT_EQ(times[static_cast<std::size_t>(i)], ((8 + i) * 10'000'000 + 57599) / 57600) << i;
}

TEST_F(LineTest, BytesQueueOnTheWireAndLatenessInTakingDoesNotAddUp) {
    line.Receive(Command('T'));
    clock.now = 500us;
    line.Receive(Command('T'));
    clock.now = 7'500us;
    EXPECT_EQ(Ask(line, {}).size(), 5u) << "due at 3000, 4000, 5000, 6000, 7000";
    const auto times = Arrivals(line, clock, replies);
    ASSERT_EQ(times.size(), 15u);
    EXPECT_EQ(times[0], 8'000);
    EXPECT_EQ(times[4], 12'000);
    EXPECT_EQ(times[5], 13'000) << "ready at 4000, but the line is busy";
}

TEST_F(LineTest, FaultsWithinKeepTheirTimeAndHangUpWaitsForTheWire) {
    FaultPlan plan;
    plan.Delay = {{}, 20ms};
    plan.HangUpInReply = 1;
    FaultyBoard faulty(board, clock.Reading(), plan);
    PacedLine paced(faulty, clock.Reading(), 10'000);
    paced.Receive(Command('T') + Command('T'));
    EXPECT_FALSE(paced.HungUp());
    const auto times = Arrivals(paced, clock, replies);
    EXPECT_THAT(times, testing::ElementsAre(23'000, 24'000, 25'000, 26'000, 27'000));
    EXPECT_TRUE(paced.HungUp());
    EXPECT_THAT(Ask(faulty, Command('T')), IsEmpty());
    EXPECT_EQ(faulty.NextDue(), std::nullopt);
}

TEST_F(LineTest, WhatFollowsADelayedReplyWaitsForIt) {
    FaultPlan plan;
    plan.Delay = {1, 1500ms};
    FaultyBoard faulty(board, clock.Reading(), plan);
    EXPECT_THAT(Ask(faulty, Command('T')), IsEmpty());
    EXPECT_EQ(faulty.NextDue(), 1500ms);
    clock.now = 1'499'999us;
    EXPECT_THAT(Ask(faulty, Command('T')), IsEmpty());
    clock.now = 1500ms;
    EXPECT_EQ(Ask(faulty, {}), Identity + Identity);
}

}  // namespace
}  // namespace Tamber::Simulator
