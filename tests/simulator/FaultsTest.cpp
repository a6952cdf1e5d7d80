#include "simulator/BoardBench.hpp"
#include "simulator/Faults.hpp"

namespace Tamber::Simulator {
namespace {

using namespace std::chrono_literals;

struct FaultsTest : testing::Test {
    HandClock clock;
    BoardEngine board{clock.Reading(), {7, 64, 16}};
    FaultPlan plan;

    FaultyBoard Faulty() { return {board, clock.Reading(), plan}; }

    // A little job with five requests: the lengths of the replies to them.
    static std::vector<std::size_t> Job(BoardLine& line) {
        std::vector<std::size_t> lengths{Ask(line, Command('g') + Command('T')).size()};
        lengths.push_back(Ask(line, Command('W') + WriteRequest(0x00, 8, Counting(1))).size());
        lengths.push_back(Ask(line, WriteRequest(0x10, 8, Counting(0x11))).size());
        lengths.push_back(Ask(line, Command('W') + Command('I') + ReadRequest(0x00)).size());
        lengths.push_back(Ask(line, ReadRequest(0x10)).size());
        Ask(line, Command('I') + Command('F'));
        return lengths;
    }
};

TEST_F(FaultsTest, WithoutAPlanNothingDiffers) {
    EXPECT_TRUE(plan.Empty());
    auto faulty = Faulty();
    EXPECT_THAT(Job(faulty), ElementsAre(10, 3, 3, 17, 17));
    EXPECT_EQ(faulty.Requests(), 5);
    EXPECT_FALSE(faulty.HungUp());
    EXPECT_EQ(faulty.NextDue(), std::nullopt);
}

TEST_F(FaultsTest, SilentBoardsNeitherAnswerNorObey) {
    plan.silentFrom = 3;
    board.Memory().SetByte(0x4200, 0x12);
    auto faulty = Faulty();
    EXPECT_THAT(Job(faulty), ElementsAre(10, 3, 0, 0, 0));
    EXPECT_EQ(board.Memory().ByteAt(0x0000), 1);
    EXPECT_EQ(board.Memory().ByteAt(0x0010), 0xFF);
    EXPECT_EQ(board.Memory().ByteAt(0x4200), 0x12) << "the erase came after its death";
    EXPECT_FALSE(faulty.HungUp());
}

TEST_F(FaultsTest, RepliesAreCutAndFilledUp) {
    for (const std::size_t length : {0u, 1u, 16u, 18u, 40u}) {
        plan.replyLength = {4, length};
        auto faulty = Faulty();
        EXPECT_THAT(Job(faulty), ElementsAre(10, 3, 3, length, 17));
    }
    plan.replyLength = {1, 18};
    auto faulty = Faulty();
    EXPECT_EQ(Ask(faulty, ReadRequest(0)), Bytes{17} + Counting(1) + Bytes{0xEE});
}

TEST_F(FaultsTest, EveryIdentificationHasTheLengthPlanned) {
    for (const std::size_t length : {9u, 10u, 11u}) {
        plan.identificationLength = length;
        auto faulty = Faulty();
        for (int i = 0; i < 2; ++i)
            EXPECT_THAT(Job(faulty), ElementsAre(length, 3, 3, 17, 17));
    }
}

TEST_F(FaultsTest, OneByteOfAReplyIsAltered) {
    plan.alteredByte = {2, 0, 9};
    auto faulty = Faulty();
    const auto good = Ask(faulty, ReadRequest(0));
    EXPECT_EQ(Ask(faulty, ReadRequest(0)), Bytes{9} + Bytes(good.begin() + 1, good.end()));
    EXPECT_EQ(Ask(faulty, ReadRequest(0)), good);
}

TEST_F(FaultsTest, AWriteIsRefusedAtItsBlockOnly) {
    plan.refusedWrite = {0x10, 0x14};
    auto faulty = Faulty();
    Ask(faulty, Command('W'));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Ask(faulty, WriteRequest(0x00, 8, Counting(1))), (Bytes{3, 0, 0}));
        EXPECT_EQ(Ask(faulty, WriteRequest(0x10, 8, Counting(1))), (Bytes{3, 1, 0x14}));
    }
    EXPECT_EQ(Ask(faulty, ReadRequest(0x10))[1], 0xFF);
}

TEST_F(FaultsTest, DelayedRepliesComeWholeWhenTheyAreDue) {
    plan.delay = {2, 1500ms};
    const auto block = Ask(board, ReadRequest(0));
    auto faulty = Faulty();
    EXPECT_EQ(Ask(faulty, Command('T')), Identity);
    clock.now = 10us;
    EXPECT_THAT(Ask(faulty, ReadRequest(0)), IsEmpty());
    EXPECT_EQ(faulty.NextDue(), 1'500'010us);
    clock.now = 1'500'009us;
    EXPECT_THAT(Ask(faulty, Command('T')), IsEmpty()) << "waits behind the delayed one";
    clock.now = 1'500'010us;
    EXPECT_EQ(Ask(faulty, {}), block + Identity);
}

TEST_F(FaultsTest, HangsUpAtARequestOrHalfwayThroughItsReply) {
    plan.hangUpAtRequest = 3;
    auto atRequest = Faulty();
    EXPECT_THAT(Job(atRequest), ElementsAre(10, 3, 0, 0, 0));
    EXPECT_TRUE(atRequest.HungUp());

    plan = {};
    plan.hangUpInReply = 4;
    auto inReply = Faulty();
    inReply.Receive(Command('T') + ReadRequest(0) + ReadRequest(0) + ReadRequest(0));
    EXPECT_FALSE(inReply.HungUp()) << "what has been sent must first be fetched";
    Bytes replies;
    inReply.Take(replies);
    EXPECT_EQ(replies.size(), 10u + 17u + 17u + 8u);
    EXPECT_TRUE(inReply.HungUp());
    EXPECT_THAT(Ask(inReply, Command('T')), IsEmpty());
    EXPECT_EQ(inReply.NextDue(), std::nullopt);
}

TEST_F(FaultsTest, HalfAFrameIsForgottenHereToo) {
    plan.silentFrom = 99;
    auto faulty = Faulty();
    faulty.Receive(Bytes{20, 1, 2});
    clock.now += 100ms;
    EXPECT_EQ(Ask(faulty, Command('T')), Identity);
}

}  // namespace
}  // namespace Tamber::Simulator
