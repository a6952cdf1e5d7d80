#include <algorithm>

#include "cli/CliBench.hpp"
#include "simulator/ReplayBoard.hpp"

namespace Tamber::Cli {
namespace {

using Simulator::ReadTrace;
using Simulator::ReplayBoard;
using Simulator::TracedExchange;
using Simulator::TraceFault;
using std::chrono::microseconds;
using namespace std::chrono_literals;
using Exchanges = std::vector<TracedExchange>;
using Bytes = std::vector<std::uint8_t>;

std::vector<std::string> WithoutTimes(const std::string& trace) {
    std::vector<std::string> lines;
    std::istringstream text(trace);
    for (std::string line; std::getline(text, line);)
        lines.push_back(line.substr(line.find(' ') + 1));
    return lines;
}

struct TracedBoard {
    const char* what;
    void (*plan)(Simulator::FaultPlan& faults);
};

void PrintTo(const TracedBoard& board, std::ostream* out) {
    *out << board.what;
}

const TracedBoard TracedBoards[] = {
    {"sound", [](auto&) {}},
    {"silent", [](auto& faults) { faults.SilentFrom = 150; }},
    {"short reply", [](auto& faults) { faults.ReplyLength.emplace(20, 5); }},
    {"late",
     [](auto& faults) {
         faults.Delay = {std::nullopt, 30ms};
     }},
    {"refusing", [](auto& faults) { faults.RefusedWrite.emplace(0x20, 0x24); }},
    {"no board", [](auto& faults) { faults.IdentificationLength = 4; }},
};

class Replays : public CliTest, public testing::WithParamInterface<TracedBoard> {};

// The same command against the trace of a board, good or faulty, leaves the same trace again and
// takes the same time.
TEST_P(Replays, ATraceGivesTheSameWireAgain) {
    Simulator::FaultPlan faults;
    GetParam().plan(faults);
    Socket({7, 1024, 64}, faults);
    const std::string sample = Sample("greeting-16f84a");
    const Ran first = Run({"auto", sample, "--trace", folder / "first.txt"});
    const auto firstTime = desktop.now;
    auto parsed = ReadTrace(FileText(folder / "first.txt"));
    ASSERT_TRUE(std::holds_alternative<Exchanges>(parsed));
    ReplayBoard replay(desktop.Clock(), std::get<Exchanges>(parsed));
    desktop.board = &replay;
    const Ran second = Run({"auto", sample, "--trace", folder / "second.txt"});
    EXPECT_EQ(second.Status, first.Status);
    EXPECT_EQ(second.Out, first.Out);
    EXPECT_EQ(WithoutTimes(FileText(folder / "second.txt")),
              WithoutTimes(FileText(folder / "first.txt")));
    EXPECT_EQ(desktop.now - firstTime, firstTime);
}

INSTANTIATE_TEST_SUITE_P(Boards, Replays, testing::ValuesIn(TracedBoards));

TEST_F(CliTest, ATraceHasALineForEveryFrameAndReply) {
    Run({"blank", "--only", "config", "--trace", folder / "trace.txt"});
    EXPECT_EQ(FileText(folder / "trace.txt"),
              "0.000000 > 01 54 ; identify\n"
              "0.000000 < 0A 54 41 4D 42 52 20 20 31 30 ; answer\n"
              "0.020000 > 01 67 ; device type 7\n"
              "0.020000 > 01 52 ; read\n"
              "0.020000 > 04 40 00 00 01 ; block at 4000\n"
              "0.020000 < 11 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF 3F ; answer\n"
              "0.020000 > 01 49 ; end\n");
    EXPECT_EQ(Run({"blank", "--trace", folder / "no" / "trace.txt"}).Status, 3);
}

TEST(ReadTrace, TakesTheBoardsOwnTracesWithTheirFaults) {
    const auto parsed = ReadTrace(
        "# by hand\n"
        "1.000000 > 01 54 ; identify\r\n"
        "1.000100 < 0A 54 ; TAMBR 1.0\n"
        "1.250000 ! EE ; fault, in place of the reply, 250 ms late\n"
        "\n"
        "2.000000 > 01 57 ; write sequence opens\n"
        "3.000000 > 14 00 ; kept from the board by a fault\n"
        "3.000000 ! ; fault, no answer\n"
        "4.000000 > 01 49 ; end\n"
        "4.000000 < 03 00 00 ; written\n"
        "4.000000 ! 03 ; fault, hung up after these\n"
        "what stands behind it is not read\n");
    ASSERT_TRUE(std::holds_alternative<Exchanges>(parsed));
    const auto& exchanges = std::get<Exchanges>(parsed);
    ASSERT_EQ(exchanges.size(), 4u);
    ASSERT_EQ(exchanges[0].answers.size(), 1u);
    EXPECT_EQ(exchanges[0].answers[0].bytes, Bytes{0xEE});
    EXPECT_EQ(exchanges[0].answers[0].delay, microseconds(250'000));
    EXPECT_TRUE(exchanges[1].answers.empty() && exchanges[2].answers.empty());
    EXPECT_EQ(exchanges[3].answers.at(0).bytes, Bytes{0x03});
    EXPECT_TRUE(exchanges[3].hungUp);
}

TEST(ReadTrace, SaysWhichLineIsWrong) {
    for (const std::string line :
         {"nonsense", "1.000000 > 01 54", "1.0 > 01 ; time", "1.000000 ? 01 ; mark",
          "1.000000 > 1 ; byte", "-1.000000 > 01 ; time", "1.000000 >> 01 ; mark"}) {
        const auto parsed = ReadTrace("0.000000 > 01 54 ; identify\n" + line + "\n");
        const auto* const fault = std::get_if<TraceFault>(&parsed);
        ASSERT_NE(fault, nullptr) << line;
        EXPECT_EQ(fault->line, 2) << line;
    }
}

TEST(ReplayBoard, FollowsAHostThatLeavesFramesOutAndIgnoresStrangeOnes) {
    auto now = microseconds(0);
    ReplayBoard board([&now] { return now; },
                      {{{1, 'T'}, {{microseconds(5), {10}}}, false},
                       {{1, 'g'}, {}, false},
                       {{1, 'R'}, {{microseconds(7), {1, 2}}, {microseconds(9), {3}}}, true}});
    Bytes reply;
    board.Receive(Bytes{1, 'X', 1, 'R'});
    EXPECT_EQ(board.NextDue(), microseconds(7));
    board.Take(reply);
    EXPECT_TRUE(reply.empty()) << "not due yet";
    now = microseconds(8);
    board.Take(reply);
    EXPECT_EQ(reply, (Bytes{1, 2}));
    EXPECT_FALSE(board.HungUp()) << "a byte is still to come";
    now = microseconds(9);
    board.Take(reply);
    EXPECT_EQ(reply, (Bytes{1, 2, 3}));
    EXPECT_TRUE(board.HungUp());
}

}  // namespace
}  // namespace Tamber::Cli
