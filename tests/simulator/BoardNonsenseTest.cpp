#include <random>

#include "simulator/BoardBench.hpp"

namespace Tamber::Simulator {
namespace {

using namespace std::chrono_literals;

struct BoardNonsenseTest : testing::Test {
    HandClock clock;
    BoardEngine board{clock.Reading(), {7, 64, 16}};
};

TEST_F(BoardNonsenseTest, FramesMayBeCutAnywhere) {
    const auto talk = Command('T') + Command('?') + Command('W') +
                      WriteRequest(0x10, 8, Counting(1)) + Bytes{0, 3, 'T', 'T', 'T'} +
                      Command('W') + Command('I') + ReadRequest(0x10) + Command('I');
    const auto expected = Identity + Bytes{3, 0, 0} + Bytes{17} + Counting(1);
    for (std::size_t portion = 1; portion <= talk.size(); ++portion) {
        BoardEngine fresh(clock.Reading(), {7, 64, 16});
        Bytes replies;
        for (std::size_t i = 0; i < talk.size(); i += portion) {
            fresh.Receive(std::span(talk).subspan(i, std::min(portion, talk.size() - i)));
            fresh.Take(replies);
        }
        EXPECT_EQ(replies, expected) << portion;
    }
}

TEST_F(BoardNonsenseTest, AFrameThatDoesNotFollowIsDroppedAfterItsTime) {
    for (const std::uint8_t count : Bytes{1, 4, 20, 200}) {
        board.Receive(Bytes{count});
        clock.now += 100ms;
        EXPECT_EQ(Ask(board, Command('T')), Identity) << int{count};
    }
    board.Receive(Bytes{1});
    clock.now += 99'999us;
    EXPECT_EQ(Ask(board, {'T'}), Identity) << "a slow frame is still a frame";
}

TEST_F(BoardNonsenseTest, AnAddressCountsOnlyRightAfterARead) {
    const Bytes address{4, 0, 0, 0, 1};
    EXPECT_THAT(Ask(board, address), IsEmpty());
    EXPECT_THAT(Ask(board, Command('R') + Command('I') + address), IsEmpty());
    EXPECT_THAT(Ask(board, Command('R') + Command('R') + address), testing::SizeIs(17));
    EXPECT_THAT(Ask(board, address), IsEmpty());
}

TEST_F(BoardNonsenseTest, AnswersAfterASilenceWhateverWasOnTheLine) {
    std::mt19937 random(20240229);
    const auto upTo = [&](unsigned most) { return static_cast<unsigned>(random() % (most + 1)); };
    const std::uint8_t likely[] = {0, 1, 4, 20, 'R', 'W', 'T', 'I', 'a', 'E', 0x40, 0x42};
    for (int round = 0; round < 3000; ++round) {
        Bytes noise;
        for (unsigned left = upTo(60); left > 0; --left)
            noise.push_back(upTo(3) != 0 ? likely[upTo(11)] : static_cast<std::uint8_t>(upTo(255)));
        board.Receive(noise);
        clock.now += std::chrono::microseconds(upTo(120'000));
        Bytes unread;
        board.Take(unread);
        clock.now += 100ms;
        ASSERT_EQ(Ask(board, Command('T')), Identity) << round;
        ASSERT_EQ(Ask(board, ReadRequest(0x4000)).size(), 17u) << round;
    }
}

}  // namespace
}  // namespace Tamber::Simulator
