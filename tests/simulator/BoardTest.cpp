#include <algorithm>
#include <random>

#include "simulator/BoardBench.hpp"
#include "simulator/DeviceFile.hpp"
#include "simulator/Faults.hpp"
#include "simulator/PacedLine.hpp"

namespace Tamber::Simulator {
namespace {

struct BoardEngineTest : testing::Test {
    HandClock clock;
    BoardEngine board{clock.Reading(), {7, 8192, 256}};
};

TEST_F(BoardEngineTest, EachEraseBlanksItsOwnRegionAndNoOther) {
    const DeviceShape shape{3, 16, 16};
    const std::tuple<char, std::uint32_t, std::uint32_t> regions[] = {
        {'E', 0x0000, 0x0020}, {'F', 0x4200, 0x4220}, {'G', 0x4000, 0x400E}, {'H', 0x400E, 0x4010}};
    for (const auto& [letter, begin, end] : regions) {
        BoardEngine engine(clock.Reading(), shape);
        DeviceMemory expected(shape);
        for (std::uint32_t address = 0; address < 0x10000; ++address) {
            engine.Memory().SetByte(address, 0x55);
            if (address < begin || address >= end)
                expected.SetByte(address, 0x55);
        }
        Ask(engine, Command(letter));
        for (std::uint32_t address = 0; address < 0x10000; ++address)
            ASSERT_EQ(engine.Memory().ByteAt(address), expected.ByteAt(address)) << letter;
    }
}

TEST_F(BoardEngineTest, FramesMayBeCutAnywhere) {
    const auto talk = Command('T') + Command('?') + Command('W') + Addressed(20, 0x10, 8) +
                      Bytes(16, 'R') + Bytes{0, 3, 'T', 'T', 'T'} + Command('I') +
                      ReadRequest(0x10) + Command('I');
    for (std::size_t portion = 1; portion <= talk.size(); ++portion) {
        Bytes replies;
        for (std::size_t i = 0; i < talk.size(); i += portion) {
            board.Receive(std::span(talk).subspan(i, std::min(portion, talk.size() - i)));
            board.Take(replies);
        }
        EXPECT_EQ(replies, Identity + Written + Bytes{17} + Bytes(16, 'R')) << portion;
    }
}

TEST_F(BoardEngineTest, AnswersAfterASilenceWhateverWasOnTheLine) {
    std::mt19937 random(20240229);
    const auto upTo = [&](unsigned most) { return static_cast<unsigned>(random() % (most + 1)); };
    const std::uint8_t likely[] = {0, 1, 4, 20, 'R', 'W', 'T', 'I', 'a', 'E', 0x40, 0x42};
    for (int round = 0; round < 3000; ++round) {
        Bytes noise(upTo(60));
        for (auto& byte : noise)
            byte = upTo(3) != 0 ? likely[upTo(11)] : static_cast<std::uint8_t>(upTo(255));
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
        clock.now = std::max(clock.now, *due);
        line.Take(replies);
        times.resize(replies.size(), clock.now.count());
    }
    return times;
}

struct LineTest : testing::Test {
    HandClock clock;
    BoardEngine board{clock.Reading(), {}};
    PacedLine line{board, clock.Reading(), 10'000};  // a millisecond a byte
    Bytes replies;
};

TEST_F(LineTest, EveryByteTakesTenBitTimesInBothDirections) {
    PacedLine fast(board, clock.Reading(), 57600);
    fast.Receive(ReadRequest(0));
    const auto times = Arrivals(fast, clock, replies);
    ASSERT_EQ(times.size(), 17u);
    EXPECT_EQ(replies.front(), 17);
    // Seven bytes to the board, then one after the other back; 10 / 57600 s each, rounded up.
    for (std::int64_t i = 0; i < 17; ++i)
        EXPECT_EQ(times[static_cast<std::size_t>(i)], ((8 + i) * 10'000'000 + 57599) / 57600) << i;
}

TEST(DeviceFile, BrokenFilesAreRefusedWholeWithTheirLineAndCause) {
    const std::string longRecord = ":34000000" + std::string(104, '0') + "CC\n";
    const std::pair<std::string, std::string> broken[] = {
        {"", "no end record"},
        {":02000000ABCD87\n:00000001FF\n", "wrong checksum"},
        {"\n:00000001FF\n", "no record with an address"},
        {longRecord + ":00000001FF\n", "too many bytes"},
        {":020000040001F9\n:00000001FF\n", "an address above FFFF"},
        {":020000021000EC\n:00000001FF\n", "an address above FFFF"},
    };
    for (const auto& [text, cause] : broken) {
        DeviceMemory memory({7, 16, 0});
        const auto loaded = LoadDevice(":02000000ABCD86\n" + text, memory);
        ASSERT_FALSE(loaded) << text;
        EXPECT_EQ(loaded.error().Cause, cause);
        EXPECT_EQ(loaded.error().Line, 2) << text;
        EXPECT_EQ(memory.ByteAt(0), 0xFF) << "nothing of it is taken";
    }
}

}  // namespace
}  // namespace Tamber::Simulator
