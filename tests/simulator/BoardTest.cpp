#include <algorithm>
#include <random>

#include "simulator/BoardBench.hpp"
#include "simulator/DeviceFile.hpp"
#include "simulator/Faults.hpp"
#include "simulator/PacedLine.hpp"

namespace Tamber::Simulator {
namespace {

struct BoardTest : testing::Test {
    HandClock clock;
    BoardEngine board{clock.Reading(), {}};
    PacedLine line{board, clock.Reading(), 10'000};  // a millisecond a byte
    Bytes replies;
};

TEST_F(BoardTest, ASlowFrameIsAFrameUntilItsTimeIsUp) {
    board.Receive(Bytes{1});
    clock.now += 99'999us;
    EXPECT_EQ(Ask(board, {'T'}), Identity);
    board.Receive(Command('R') + Bytes{200});
    clock.now += 100ms;
    EXPECT_THAT(Ask(board, Addressed(4, 0, 1)), IsEmpty()) << "something came between";
}

TEST_F(BoardTest, AnswersAfterASilenceWhateverWasOnTheLine) {
    std::mt19937 random(20240229);
    const Bytes likely{0, 1, 4, 20, 200, 255, 'R', 'W', 'T', 'I', 'a', 'E', 'G', 0x40, 0x42};
    for (int round = 0; round < 3000; ++round) {
        Bytes noise(random() % 61);
        for (auto& byte : noise)
            byte = likely[random() % likely.size()];
        Ask(board, noise);
        clock.now += 100ms;
        ASSERT_EQ(Ask(board, Command('T')), Identity) << round;
    }
}

// Advances the clock from due time to due time until nothing is under way; returns the time at
// which each reply byte came.
std::vector<std::int64_t> Arrivals(BoardLine& line, HandClock& clock, Bytes& replies) {
    std::vector<std::int64_t> times;
    while (const auto due = line.NextDue()) {
        EXPECT_FALSE(line.HungUp());
        clock.now = std::max(clock.now, *due);
        line.Take(replies);
        times.resize(replies.size(), clock.now.count());
    }
    return times;
}

TEST_F(BoardTest, EveryByteTakesTenBitTimesInBothDirections) {
    PacedLine fast(board, clock.Reading(), 57600);
    fast.Receive(ReadRequest(0));
    const auto times = Arrivals(fast, clock, replies);
    ASSERT_EQ(times.size(), 17u);
    EXPECT_EQ(replies.front(), 17);
    // Seven bytes to the board, then one after the other back; 10 / 57600 s each, rounded up.
    for (std::int64_t i = 0; i < 17; ++i)
        EXPECT_EQ(times[static_cast<std::size_t>(i)], ((8 + i) * 10'000'000 + 57599) / 57600) << i;
}

TEST_F(BoardTest, FaultsWithinKeepTheirTimeAndHangUpWaitsForTheWire) {
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

TEST(DeviceFile, ARefusedOneChangesNothingAndBytesWithNoPlaceArePassedOver) {
    const std::string start = ":02000000abcd86\r\n:020000040000FA\r\n";
    const std::string end = ":00000001FF\nnot looked at\n";
    DeviceMemory memory({7, 16, 0});
    EXPECT_FALSE(LoadDevice(start + ":020000040001F9\n" + end, memory));
    EXPECT_EQ(memory.ByteAt(0), 0xFF);
    EXPECT_TRUE(LoadDevice(
        start + ":1042000000000000000000000000000000000000AE\r\n:04001E00010203A434\n" + end,
        memory));
    EXPECT_EQ(memory.ByteAt(0), 0xAB);
    EXPECT_EQ(memory.ByteAt(2), 0xFF) << "what the file does not hold stays";
    EXPECT_EQ(memory.ByteAt(0x1F), 0x02) << "the record runs past the end of the device";
    EXPECT_EQ(memory.ByteAt(0x20), 0xFF);
    EXPECT_EQ(memory.ByteAt(0x4200), 0xFF);
}

}  // namespace
}  // namespace Tamber::Simulator
