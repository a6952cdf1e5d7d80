#include "simulator/BoardBench.hpp"
#include "simulator/ReplayBoard.hpp"

namespace Tamber::Simulator {
namespace {

TEST(ReadTrace, TakesTheBoardsOwnTracesWithTheirFaults) {
    const auto exchanges = ReadTrace(
        "# by hand\n"
        "1.000000 > 01 54 ; identify\r\n"
        "1.000100 < 0A 54 ; TAMBR 1.0\n"
        "1.250000 ! ee ; fault, in place of the reply, 250 ms late\n"
        "\n"
        "3.000000 > 14 00 ; kept from the board by a fault\n"
        "3.000000 ! ; fault, no answer\n"
        "4.000000 > 01 49 ; end\n"
        "4.000000 < 03 00 00 ; written\n"
        "4.000000 ! 03 ; fault, hung up after these\n"
        "nothing after it is read\n");
    ASSERT_TRUE(exchanges);
    ASSERT_EQ(exchanges->size(), 3u);
    ASSERT_EQ(exchanges->at(0).Answers.size(), 1u);
    EXPECT_EQ(exchanges->at(0).Answers[0].Bytes, Bytes{0xEE});
    EXPECT_EQ(exchanges->at(0).Answers[0].Delay, 250ms);
    EXPECT_THAT(exchanges->at(1).Answers, IsEmpty());
    EXPECT_EQ(exchanges->at(2).Answers.at(0).Bytes, Bytes{0x03});
    EXPECT_TRUE(exchanges->at(2).HungUp);
}

TEST(ReadTrace, ReportsTheLineThatIsWrong) {
    for (const std::string line :
         {"nonsense", "1.000000 > 01 54", "1.0 > 01 ; time", "1.000000 ? 01 ; mark",
          "1.000000 > 1 ; byte", "1.000000 > 0G ; byte", "-1.000000 > 01 ; time",
          "1.000000 >> 01 ; mark", "1.0000000 > 01 ; time", "9999999999.000000 > 01 ; time"}) {
        const auto exchanges = ReadTrace("0.000000 > 01 54 ; identify\n" + line + "\n");
        ASSERT_FALSE(exchanges) << line;
        EXPECT_EQ(exchanges.error().Line, 2) << line;
    }
}

TEST(ReplayBoard, FollowsAHostThatLeavesFramesOutAndIgnoresStrangeOnes) {
    HandClock clock;
    ReplayBoard board(clock.Reading(), {{{}, {1, 'T'}, {{5us, {10}}}, false},
                                        {{}, {1, 'g'}, {}, false},
                                        {{}, {1, 'R'}, {{7us, {1, 2}}, {9us, {3}}}, true}});
    EXPECT_THAT(Ask(board, {1, 'X', 1, 'R'}), IsEmpty());
    EXPECT_EQ(board.NextDue(), 7us);
    clock.now = 8us;
    EXPECT_EQ(Ask(board, {}), (Bytes{1, 2}));
    EXPECT_FALSE(board.HungUp()) << "a byte is still to come";
    clock.now = 9us;
    EXPECT_EQ(Ask(board, {}), Bytes{3});
    EXPECT_TRUE(board.HungUp());
}

}  // namespace
}  // namespace Tamber::Simulator
