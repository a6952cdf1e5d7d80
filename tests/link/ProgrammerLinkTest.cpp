#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/ProgrammerLink.hpp"
#include "simulator/ReplayBoard.hpp"
#include "support/FakeDesktop.hpp"

namespace Tamber {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class ProgrammerLinkTest : public testing::Test {
  protected:
    // Something comes from the board, `time` from now.
    void Comes(std::chrono::microseconds time, std::vector<std::uint8_t> bytes) {
        board.emplace(desktop.Clock(),
                      std::vector{Simulator::TracedExchange{{}, {}, {{time, std::move(bytes)}}}});
        desktop.board = &*board;
    }

    FakeDesktop desktop;
    std::optional<Simulator::ReplayBoard> board;
    LinkState state;
    std::unique_ptr<SerialControl> cm = desktop.NewSerialControl();
    std::unique_ptr<WindowTimer> totmr = desktop.NewTimer();
    ProgrammerLink link{state, *cm, *totmr, desktop.Events()};
};

std::vector<std::uint8_t> Bytes(int count) {
    return std::vector<std::uint8_t>(static_cast<std::size_t>(count), 0x55);
}

TEST_F(ProgrammerLinkTest, SilenceAndAShortReplyTimeOutAfterOneSecond) {
    for (const int count : {0, 16}) {
        desktop.received.clear();
        const auto start = desktop.now;
        Comes(900ms, Bytes(count));
        EXPECT_FALSE(link.RequestBlock(0));
        EXPECT_EQ(desktop.now - start, 1000ms) << "from the start of the wait, not from a byte";
        EXPECT_EQ(desktop.received.size(), static_cast<std::size_t>(count))
            << "what came stays at the port";
    }
    Comes(10ms, {0xAA});
    EXPECT_EQ(link.RequestBlock(0)->Data.back(), 0xAA) << "and counts into the next reply";
}

TEST_F(ProgrammerLinkTest, LongReplyLeavesTheTimerRunningAndTheNextWaitBeginsAFreshPeriod) {
    Comes(600ms, Bytes(300));
    EXPECT_TRUE(link.RequestBlock(0));
    auto start = desktop.now;
    Comes(800ms, Bytes(18));
    EXPECT_TRUE(link.RequestBlock(0)) << "the old period would have ended at 400 ms";
    EXPECT_EQ(desktop.now - start, 800ms);
    desktop.record.clear();
    desktop.Events().DeliverEvents();
    EXPECT_THAT(desktop.record, ElementsAre("tick 1000")) << "the timer of the long reply";
    start = desktop.now;
    Comes(990ms, Bytes(17));
    EXPECT_TRUE(link.RequestBlock(0)) << "the tick is forgotten";
    EXPECT_EQ(desktop.now - start, 990ms);
}

// As after the program was stopped for a while: the tick and the reply are due together.
TEST_F(ProgrammerLinkTest, ReplyThatIsThereBeatsTheTickAndAPartOfOneDoesNot) {
    for (const int count : {16, 17}) {
        desktop.received.clear();
        desktop.record.clear();
        Comes(1000ms, Bytes(count));
        EXPECT_EQ(link.RequestBlock(0).has_value(), count == 17);
        EXPECT_EQ(desktop.record.back(), "tick 1000");
        desktop.record.clear();
        Comes(1500ms, {0});
        desktop.Events().DeliverEvents();
        EXPECT_THAT(desktop.record, testing::IsEmpty()) << "the timer was stopped all the same";
    }
}

TEST_F(ProgrammerLinkTest, RepliesOutOfStepAreFoundAndKept) {
    const auto found = [&] {
        const auto finding = link.TakeFinding();
        return finding ? Describe(*finding) : "";
    };
    const auto reply = [](int count) {
        std::vector<std::uint8_t> bytes = Bytes(count);
        bytes[0] = 17;
        return bytes;
    };
    Comes(1ms, reply(17));
    EXPECT_TRUE(link.RequestBlock(0));
    link.EndRead();
    EXPECT_EQ(found(), "");
    Comes(1ms, reply(20));
    EXPECT_TRUE(link.RequestBlock(0));
    EXPECT_EQ(found(), "3 bytes came that nobody asked for");
    Comes(1ms, Bytes(17));
    EXPECT_TRUE(link.RequestBlock(0));
    EXPECT_EQ(found(), "a reply of 17 bytes says that it has 85");
    desktop.received = {0};
    link.BeginWrite();
    EXPECT_EQ(found(), "1 byte came that nobody asked for");
    EXPECT_EQ(desktop.received.size(), 1U) << "nothing is dropped";
    link.EmptyLine();
    link.FindLeftOver();
    EXPECT_EQ(found(), "");
}

TEST_F(ProgrammerLinkTest, IdentificationTakesTheWholePeriodAndExactlyTenBytes) {
    for (const int count : {0, 9, 10, 11}) {
        desktop.received.clear();
        totmr->Disable();
        const auto start = desktop.now;
        Comes(1ms, Bytes(count));
        link.IdentifyProgrammer();
        EXPECT_EQ(desktop.now - start, 1000ms);
        EXPECT_EQ(state.ProgrammerFound, count == 10);
        EXPECT_EQ(desktop.received.size(), count == 10 ? 0U : static_cast<std::size_t>(count));
    }
    desktop.received.clear();
    totmr->Disable();
    Comes(1ms, {0, 'A', 'B', 'C', 'D', 0xE9, 0, 0, '1', '2'});
    link.IdentifyProgrammer();
    EXPECT_EQ(Describe(state.Board), "Device: ABCD\xC3\xA9\r\nVersion 1.2");
}

TEST_F(ProgrammerLinkTest, IdentificationEndsWithThePeriodThatRunsFromTheTimersMaking) {
    Comes(300ms, {0});
    desktop.Events().DeliverEvents();
    link.IdentifyProgrammer();
    EXPECT_EQ(desktop.now, 1000ms);
    EXPECT_THAT(desktop.record, ElementsAre("> 01 54", "tick 1000"));
}

}  // namespace
}  // namespace Tamber
