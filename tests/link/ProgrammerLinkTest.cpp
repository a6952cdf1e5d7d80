#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/ProgrammerLink.hpp"
#include "simulator/BoardEngine.hpp"
#include "simulator/Faults.hpp"
#include "support/FakeDesktop.hpp"

namespace Tamber {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

// A board that says what the test tells it to, when it tells it to.
class ScriptedBoard : public Simulator::BoardLine {
  public:
    explicit ScriptedBoard(FakeDesktop& desktop) : desktop_(desktop) {}

    void At(std::chrono::microseconds time, std::vector<std::uint8_t> bytes) {
        parts_.push_back({desktop_.now + time, std::move(bytes)});
    }

    void Receive(std::span<const std::uint8_t>) override {}
    std::optional<std::chrono::microseconds> NextDue() const override {
        return parts_.empty() ? std::nullopt : std::optional(parts_.front().due);
    }
    void Take(std::vector<std::uint8_t>& bytes) override {
        while (!parts_.empty() && parts_.front().due <= desktop_.now) {
            bytes.insert(bytes.end(), parts_.front().bytes.begin(), parts_.front().bytes.end());
            parts_.erase(parts_.begin());
        }
    }
    bool HungUp() const override { return false; }

  private:
    struct Part {
        std::chrono::microseconds due;
        std::vector<std::uint8_t> bytes;
    };
    FakeDesktop& desktop_;
    std::vector<Part> parts_;
};

class ProgrammerLinkTest : public testing::Test {
  protected:
    ProgrammerLinkTest() { desktop.board = &board; }

    std::vector<std::string> TakeRecord() {
        std::vector<std::string> taken;
        taken.swap(desktop.record);
        return taken;
    }

    FakeDesktop desktop;
    ScriptedBoard board{desktop};
    LinkState state;
    std::unique_ptr<SerialControl> cm = desktop.NewSerialControl();
    std::unique_ptr<WindowTimer> totmr = desktop.NewTimer();
    ProgrammerLink link{state, *cm, *totmr, desktop.Events()};
};

std::vector<std::uint8_t> Bytes(int count) {
    return std::vector<std::uint8_t>(static_cast<std::size_t>(count), 0x55);
}

TEST_F(ProgrammerLinkTest, FramesGoOutByteForByte) {
    const auto read = [&](int address, const std::string& frame) {
        board.At(0us, Bytes(17));
        EXPECT_TRUE(link.RequestBlock(address));
        EXPECT_THAT(TakeRecord(), ElementsAre("> 01 52", frame));
    };
    read(0x0100, "> 04 01 00 00 01");
    read(0x3FF0, "> 04 3F F0 00 01");
    read(0x43F0, "> 04 43 F0 00 01");

    board.At(0us, Bytes(3));
    const std::array<std::uint8_t, 16> data{0x00, 0x01, 0x7F, 0x80, 0xFF};
    EXPECT_TRUE(link.WriteBlock(0x43F0, 8, data));
    EXPECT_THAT(TakeRecord(),
                ElementsAre("> 14 43 F0 00 08 00 01 7F 80 FF 00 00 00 00 00 00 00 00 00 00 00"));

    link.SelectDeviceType(3);
    EXPECT_THAT(TakeRecord(), ElementsAre()) << "no board was found";
    state.ProgrammerFound = true;
    link.SelectDeviceType(3);
    link.SelectDeviceType(1);
    EXPECT_THAT(TakeRecord(), ElementsAre("> 01 63", "> 01 61"));
}

TEST_F(ProgrammerLinkTest, SilenceAndAShortReplyTimeOutAfterOneSecond) {
    for (const int count : {0, 16}) {
        desktop.received.clear();
        const auto start = desktop.now;
        board.At(900ms, Bytes(count));
        EXPECT_FALSE(link.RequestBlock(0));
        EXPECT_EQ(desktop.now - start, 1000ms) << "from the start of the wait, not from a byte";
        EXPECT_EQ(desktop.received.size(), static_cast<std::size_t>(count))
            << "what came stays at the port";
    }
    board.At(10ms, {0xAA});
    EXPECT_EQ(link.RequestBlock(0)->Data.back(), 0xAA) << "and counts into the next reply";
}

TEST_F(ProgrammerLinkTest, LongReplyLeavesTheTimerRunningAndTheNextWaitBeginsAFreshPeriod) {
    board.At(600ms, Bytes(300));
    EXPECT_TRUE(link.RequestBlock(0));
    auto start = desktop.now;
    board.At(800ms, Bytes(18));
    EXPECT_TRUE(link.RequestBlock(0)) << "the old period would have ended at 400 ms";
    EXPECT_EQ(desktop.now - start, 800ms);
    TakeRecord();
    desktop.Events().DeliverEvents();
    EXPECT_THAT(TakeRecord(), ElementsAre("tick 1000")) << "the timer of the long reply";
    start = desktop.now;
    board.At(990ms, Bytes(17));
    EXPECT_TRUE(link.RequestBlock(0)) << "the tick is forgotten";
    EXPECT_EQ(desktop.now - start, 990ms);
}

// As after the program was stopped for a while: the tick and the reply are due together.
TEST_F(ProgrammerLinkTest, ReplyThatIsThereBeatsTheTickAndAPartOfOneDoesNot) {
    for (const int count : {16, 17}) {
        desktop.received.clear();
        desktop.record.clear();
        board.At(1000ms, Bytes(count));
        EXPECT_EQ(link.RequestBlock(0).has_value(), count == 17);
        EXPECT_EQ(desktop.record.back(), "tick 1000");
        desktop.record.clear();
        board.At(1500ms, {});
        desktop.Events().DeliverEvents();
        EXPECT_THAT(desktop.record, testing::IsEmpty()) << "the timer was stopped all the same";
    }
}

TEST_F(ProgrammerLinkTest, IdentificationTakesTheWholePeriodAndExactlyTenBytes) {
    for (const int count : {0, 9, 10, 11}) {
        desktop.received.clear();
        totmr->Disable();
        const auto start = desktop.now;
        board.At(1ms, Bytes(count));
        link.IdentifyProgrammer();
        EXPECT_EQ(desktop.now - start, 1000ms);
        EXPECT_EQ(state.ProgrammerFound, count == 10);
        EXPECT_EQ(desktop.received.size(), count == 10 ? 0U : static_cast<std::size_t>(count));
    }
    desktop.received.clear();
    totmr->Disable();
    board.At(1ms, {0, 'A', 'B', 'C', 'D', 0xE9, 0, 0, '1', '2'});
    link.IdentifyProgrammer();
    EXPECT_EQ(Describe(state.Board), "Device: ABCD\xC3\xA9\r\nVersion 1.2");
}

TEST_F(ProgrammerLinkTest, IdentificationEndsWithThePeriodThatRunsFromTheTimersMaking) {
    board.At(300ms, {});
    desktop.Events().DeliverEvents();
    link.IdentifyProgrammer();
    EXPECT_EQ(desktop.now, 1000ms);
    EXPECT_THAT(desktop.record, ElementsAre("> 01 54", "tick 1000"));
}

}  // namespace
}  // namespace Tamber
