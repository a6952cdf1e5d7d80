#include "simulator/BoardBench.hpp"
#include "simulator/BoardTrace.hpp"
#include "simulator/Faults.hpp"

namespace Tamber::Simulator {
namespace {

TEST(BoardTrace, TellsEveryFrameEveryReplyAndWhatAFaultMadeOfThem) {
    HandClock clock;
    clock.now = std::chrono::microseconds(12'000'042);
    std::vector<std::string> lines;
    const auto trace = [&](std::string_view line) { lines.emplace_back(line); };
    BoardEngine board(clock.Reading(), {7, 64, 0}, {}, trace);
    FaultPlan plan;
    plan.replyLength = {2, 1};
    plan.refusedWrite = {0x20, 0x24};
    plan.silentFrom = 4;
    FaultyBoard faulty(board, clock.Reading(), plan, trace);
    const Bytes data(16, 0xAA);
    faulty.Receive(Command('T') + Command('g') + Command('W') + WriteRequest(0x10, 1, data) +
                   WriteRequest(0x20, 1, data) + Bytes{0} + ReadRequest(0));
    const std::string aa = " AA AA AA AA AA AA AA AA AA AA AA AA AA AA AA AA ; ";
    const std::string expected[] = {
        "> 01 54 ; identify",
        "< 0A 54 41 4D 42 52 20 20 31 30 ; TAMBR 1.0",
        "> 01 67 ; device type 7",
        "> 01 57 ; write sequence opens",
        "> 14 00 10 00 01" + aa + "write 1 words at 0010",
        "< 03 00 00 ; written",
        "! 03 ; fault, in place of the reply",
        "> 14 00 20 00 01" + aa + "kept from the board by a fault",
        "! 03 01 24 ; fault, in place of the reply",
        "> 00 ; ignored, no frame has this length",
        "> 01 52 ; read",
        "> 04 00 00 00 01 ; kept from the board by a fault",
        "! ; fault, no answer",
    };
    ASSERT_EQ(lines.size(), std::size(expected));
    for (std::size_t i = 0; i < lines.size(); ++i)
        EXPECT_EQ(lines[i], "12.000042 " + expected[i]);
}

}  // namespace
}  // namespace Tamber::Simulator
