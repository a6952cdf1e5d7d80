#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/MemoryImage.hpp"
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
    board.At(0us, Bytes(17));
    EXPECT_TRUE(link.RequestBlock(ProgramBlock(1023)));
    EXPECT_THAT(TakeRecord(), ElementsAre("> 01 52", "> 04 3F F0 00 01"));

    board.At(0us, Bytes(3));
    std::array<std::uint8_t, 16> data{0x00, 0x01, 0x7F, 0x80, 0xFF};
    EXPECT_TRUE(link.WriteBlock(EepromBlock(31), 8, data));
    EXPECT_THAT(TakeRecord(),
                ElementsAre("> 14 43 F0 00 08 00 01 7F 80 FF 00 00 00 00 00 00 00 00 00 00 00"));

    link.SendCommand(TypeLetter(3));
    link.SendCommand(CommandEraseConfiguration);
    EXPECT_THAT(TakeRecord(), ElementsAre("> 01 63", "> 01 48"));
}

TEST_F(ProgrammerLinkTest, BlockAddresses) {
    struct Case {
        BlockAddress address;
        int byteAddress;
    };
    for (const auto& [address, byteAddress] :
         {Case{ProgramBlock(0), 0x0000}, Case{ProgramBlock(1), 0x0010},
          Case{ProgramBlock(16), 0x0100}, Case{ProgramBlock(1023), 0x3FF0},
          Case{EepromBlock(0), 0x4200}, Case{EepromBlock(15), 0x42F0},
          Case{EepromBlock(16), 0x4300}, Case{ConfigurationBlock, 0x4000}})
        EXPECT_EQ(address.AddrHi * 256 + address.AddrLo, byteAddress);
}

TEST_F(ProgrammerLinkTest, ReplyInPiecesIsTakenWhole) {
    const auto start = desktop.now;
    board.At(400ms, Bytes(5));
    board.At(999ms, Bytes(12));
    EXPECT_TRUE(link.RequestBlock(ProgramBlock(0)));
    EXPECT_EQ(state.ReplyBytes.size(), 17U);
    EXPECT_EQ(desktop.now - start, 999ms);
    EXPECT_THAT(desktop.received, testing::IsEmpty());
}

TEST_F(ProgrammerLinkTest, SilenceAndAShortReplyTimeOutAfterOneSecond) {
    for (const int count : {0, 16}) {
        desktop.received.clear();
        state.ReplyBytes = {1, 2, 3};
        const auto start = desktop.now;
        board.At(900ms, Bytes(count));
        EXPECT_FALSE(link.RequestBlock(ProgramBlock(0)));
        EXPECT_EQ(desktop.now - start, 1000ms) << "from the start of the wait, not from a byte";
        EXPECT_EQ(state.ReplyBytes, (std::vector<std::uint8_t>{1, 2, 3}));
        EXPECT_EQ(desktop.received.size(), static_cast<std::size_t>(count))
            << "what came stays at the port";
    }
}

TEST_F(ProgrammerLinkTest, LeftoverBytesCountIntoTheNextReply) {
    board.At(0us, Bytes(16));
    EXPECT_FALSE(link.RequestBlock(ProgramBlock(0)));
    board.At(10ms, {0xAA});
    EXPECT_TRUE(link.RequestBlock(ProgramBlock(0)));
    EXPECT_EQ(state.ReplyBytes.size(), 17U);
    EXPECT_EQ(state.ReplyBytes.back(), 0xAA);
}

TEST_F(ProgrammerLinkTest, LongReplyLeavesTheTimerRunningAndTheNextWaitClearsItsTick) {
    board.At(10ms, Bytes(300));
    EXPECT_TRUE(link.RequestBlock(ProgramBlock(0)));
    EXPECT_EQ(state.ReplyBytes.size(), 300U);
    EXPECT_FALSE(state.ReplyTimedOut);
    desktop.Events().DeliverEvents();
    EXPECT_TRUE(state.ReplyTimedOut) << "the timer of the long reply ticked";
    const auto start = desktop.now;
    board.At(990ms, Bytes(17));
    EXPECT_TRUE(link.RequestBlock(ProgramBlock(0)));
    EXPECT_EQ(desktop.now - start, 990ms);
}

TEST_F(ProgrammerLinkTest, AWaitBeginsAFreshPeriodWhileTheTimerRuns) {
    board.At(600ms, Bytes(18));
    EXPECT_TRUE(link.RequestBlock(ProgramBlock(0)));
    const auto start = desktop.now;
    board.At(800ms, Bytes(17));
    EXPECT_TRUE(link.RequestBlock(ProgramBlock(0))) << "the old period would have ended at 400 ms";
    EXPECT_EQ(desktop.now - start, 800ms);
}

TEST_F(ProgrammerLinkTest, TickAndLastByteInTheSameMomentCountAsTimedOut) {
    board.At(1000ms, Bytes(17));
    EXPECT_FALSE(link.RequestBlock(ProgramBlock(0)));
    EXPECT_EQ(desktop.received.size(), 17U);
    desktop.record.clear();
    board.At(1500ms, {});
    desktop.Events().DeliverEvents();
    EXPECT_THAT(desktop.record, testing::IsEmpty()) << "the timer was stopped all the same";
}

TEST_F(ProgrammerLinkTest, IdentificationTakesTheWholePeriodAndExactlyTenBytes) {
    for (const int count : {0, 9, 10, 11}) {
        desktop.received.clear();
        state.ReplyBytes.clear();
        totmr->Disable();
        const auto start = desktop.now;
        board.At(1ms, Bytes(count));
        link.IdentifyProgrammer();
        EXPECT_EQ(desktop.now - start, 1000ms);
        EXPECT_EQ(state.ProgrammerFound, count == 10);
        EXPECT_EQ(state.ReplyBytes.size(), count == 10 ? 10U : 0U);
        EXPECT_EQ(desktop.received.size(), count == 10 ? 0U : static_cast<std::size_t>(count));
    }
}

TEST_F(ProgrammerLinkTest, IdentificationEndsWithThePeriodThatRunsFromTheTimersMaking) {
    board.At(300ms, {});
    desktop.Events().DeliverEvents();
    link.IdentifyProgrammer();
    EXPECT_EQ(desktop.now, 1000ms);
    EXPECT_THAT(desktop.record, ElementsAre("> 01 54", "tick 1000"));
}

TEST_F(ProgrammerLinkTest, PortIsOpenedWithTheBoardsSettings) {
    EXPECT_EQ(link.OpenPort(3), std::nullopt);
    EXPECT_THAT(TakeRecord(), ElementsAre("open COM3 57600,N,8,1"));
}

}  // namespace
}  // namespace Tamber
