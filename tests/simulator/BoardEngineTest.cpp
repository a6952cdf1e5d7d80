#include <algorithm>
#include <random>

#include "simulator/BoardBench.hpp"

namespace Tamber::Simulator {
namespace {

struct BoardEngineTest : testing::Test {
    HandClock clock;
    BoardEngine board{clock.Reading(), {7, 8192, 256}};
};

TEST_F(BoardEngineTest, AnswersNothingButIdentificationReadsAndWrites) {
    for (int letter = 0; letter < 256; ++letter) {
        const std::size_t length = letter == 'T' ? 10 : 0;
        EXPECT_EQ(Ask(board, Command(static_cast<char>(letter))).size(), length) << letter;
    }
}

TEST_F(BoardEngineTest, ReadsTheBytesOfABlockAtEveryRegionEdge) {
    const auto value = [](unsigned i) { return static_cast<std::uint8_t>(i / 2 * 7 + i % 2); };
    for (std::uint32_t address = 0; address < DeviceMemory::EndAddress; ++address)
        board.Memory().SetByte(address, value(address));
    for (const unsigned address : {0x0000u, 0x0100u, 0x3FF0u, 0x4000u, 0x4200u, 0x43F0u}) {
        Bytes expected{17};
        for (unsigned i = address; i < address + 16; ++i)
            expected.push_back(value(i));
        EXPECT_EQ(Ask(board, ReadRequest(address)), expected) << std::hex << address;
    }
}

TEST_F(BoardEngineTest, BlankDevicesReadBlankInsideAndPastTheirSize) {
    for (const int type : {1, 5, 6, 26}) {
        BoardEngine blank(clock.Reading(), {type, 64, 16});
        Ask(blank, Command('z'));
        for (const unsigned address :
             {0x0000u, 0x0070u, 0x0080u, 0x3FF0u, 0x4010u, 0x4200u, 0x4220u, 0xFFF0u}) {
            Bytes expected(17, 0xFF);
            expected[0] = 17;
            for (std::size_t i = 2; address < 0x4000 && i < 17; i += 2)
                expected[i] = type < 6 ? 0x0F : 0x3F;
            EXPECT_EQ(Ask(blank, ReadRequest(address)), expected) << type << ' ' << address;
        }
        EXPECT_EQ(Ask(blank, ReadRequest(0x4000)), Bytes{17} + Bytes(15, 0xFF) + Bytes{0x3F});
    }
}

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

TEST_F(BoardEngineTest, AFrameThatDoesNotFollowIsDroppedAfterItsTime) {
    for (const std::uint8_t count : Bytes{1, 4, 20, 200}) {
        board.Receive(Bytes{count});
        clock.now += 100ms;
        EXPECT_EQ(Ask(board, Command('T')), Identity) << int{count};
    }
    board.Receive(Bytes{1});
    clock.now += 99'999us;
    EXPECT_EQ(Ask(board, {'T'}), Identity) << "a slow frame is still a frame";
    board.Receive(Command('R') + Bytes{200});
    clock.now += 100ms;
    EXPECT_THAT(Ask(board, Addressed(4, 0, 1)), IsEmpty()) << "something came between";
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

}  // namespace
}  // namespace Tamber::Simulator
