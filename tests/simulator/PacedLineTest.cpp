#include "simulator/BoardBench.hpp"
#include "simulator/Faults.hpp"
#include "simulator/PacedLine.hpp"

namespace Tamber::Simulator {
namespace {

using namespace std::chrono_literals;

// Lets the clock run from due time to due time until nothing is under way; gives the time at which
// each reply byte came.
std::vector<std::int64_t> Arrivals(BoardLine& line, HandClock& clock, Bytes& replies) {
    std::vector<std::int64_t> times;
    while (const auto due = line.NextDue()) {
        clock.now = std::max(clock.now, *due);
        line.Take(replies);
        times.resize(replies.size(), clock.now.count());
    }
    return times;
}

struct PacedLineTest : testing::Test {
    HandClock clock;
    BoardEngine board{clock.Reading(), {}};
    Bytes replies;
};

TEST_F(PacedLineTest, EveryByteTakesTenBitTimesInBothDirections) {
    PacedLine line(board, clock.Reading(), 57600);
    line.Receive(ReadRequest(0));
    const auto times = Arrivals(line, clock, replies);
    ASSERT_EQ(times.size(), 17u);
    EXPECT_EQ(replies.front(), 17);
    // Seven bytes to the board, then one after the other back; 10 / 57600 s each, rounded up.
    for (std::int64_t i = 0; i < 17; ++i)
        EXPECT_EQ(times[static_cast<std::size_t>(i)], ((8 + i) * 10'000'000 + 57599) / 57600) << i;
}

TEST_F(PacedLineTest, BytesQueueBehindThoseStillOnTheWire) {
    PacedLine line(board, clock.Reading(), 10'000);  // a millisecond a byte
    line.Receive(Command('T'));
    clock.now = 500us;
    line.Receive(Command('T'));
    const auto times = Arrivals(line, clock, replies);
    ASSERT_EQ(replies, Identity + Identity);
    EXPECT_EQ(times[0], 3'000);
    EXPECT_EQ(times[9], 12'000);
    EXPECT_EQ(times[10], 13'000) << "ready at 4000, but the line is busy";
}

TEST_F(PacedLineTest, LatenessInFetchingDoesNotAddUp) {
    PacedLine line(board, clock.Reading(), 10'000);
    line.Receive(Command('T'));
    clock.now = 7'500us;
    line.Take(replies);
    EXPECT_EQ(replies.size(), 5u) << "due at 3000, 4000, 5000, 6000, 7000";
    EXPECT_EQ(line.NextDue(), 8'000us);
}

TEST_F(PacedLineTest, FaultsWithinKeepTheirTimeAndHangUpWaitsForTheWire) {
    FaultPlan plan;
    plan.delay = {{}, 20ms};
    plan.hangUpInReply = 1;
    FaultyBoard faulty(board, clock.Reading(), plan);
    PacedLine line(faulty, clock.Reading(), 10'000);
    line.Receive(Command('T') + Command('T'));
    EXPECT_FALSE(line.HungUp());
    const auto times = Arrivals(line, clock, replies);
    EXPECT_THAT(times, ElementsAre(23'000, 24'000, 25'000, 26'000, 27'000));
    EXPECT_TRUE(line.HungUp());
}

}  // namespace
}  // namespace Tamber::Simulator
