#include "simulator/BoardBench.hpp"
#include "simulator/BoardEngine.hpp"

namespace Tamber::Simulator {
namespace {

struct BoardEngineTest : testing::Test {
    HandClock clock;
    BoardEngine board{clock.Reading(), {7, 8192, 256}};

    void FillWithAddresses(DeviceMemory& memory) {
        for (std::uint32_t address = 0; address < 0x4400; ++address)
            memory.SetByte(address, static_cast<std::uint8_t>(address / 2 * 7 + address % 2));
    }
};

TEST_F(BoardEngineTest, IdentifiesItselfWithNameAndVersion) {
    EXPECT_EQ(Ask(board, {1, 'T'}), Identity);
    BoardEngine other(clock.Reading(), {}, {"PB", '2', '7'});
    EXPECT_EQ(Ask(other, {1, 'T'}), (Bytes{10, 'P', 'B', ' ', ' ', ' ', ' ', ' ', '2', '7'}));
}

TEST_F(BoardEngineTest, AnswersNothingButIdentificationReadsAndWrites) {
    for (int letter = 0; letter < 256; ++letter) {
        const std::size_t length = letter == 'T' ? 10 : 0;
        EXPECT_EQ(Ask(board, Command(static_cast<char>(letter))).size(), length) << letter;
        EXPECT_EQ(board.NextDue(), std::nullopt) << letter;
    }
}

TEST_F(BoardEngineTest, ReadsTheBytesOfABlockAtEveryRegionEdge) {
    FillWithAddresses(board.Memory());
    for (const unsigned address :
         {0x0000u, 0x0010u, 0x0100u, 0x3FF0u, 0x4000u, 0x4200u, 0x4210u, 0x43F0u}) {
        Bytes expected{17};
        for (unsigned i = address; i < address + 16; ++i)
            expected.push_back(static_cast<std::uint8_t>(i / 2 * 7 + i % 2));
        EXPECT_EQ(Ask(board, ReadRequest(address)), expected) << std::hex << address;
    }
}

TEST_F(BoardEngineTest, BlankDevicesReadBlankInsideAndPastTheirSize) {
    const auto alternating = [](std::uint8_t low, std::uint8_t high) {
        Bytes reply{17};
        for (int i = 0; i < 8; ++i)
            reply = reply + Bytes{low, high};
        return reply;
    };
    for (const int type : {1, 5, 6, 26}) {
        BoardEngine blank(clock.Reading(), {type, 64, 16});
        Ask(blank, {1, 'z'});
        const std::uint8_t high = type < 6 ? 0x0F : 0x3F;
        for (const unsigned address : {0x0000u, 0x0070u, 0x0080u, 0x3FF0u})
            EXPECT_EQ(Ask(blank, ReadRequest(address)), alternating(0xFF, high)) << type;
        for (const unsigned address : {0x4010u, 0x4200u, 0x4220u, 0xFFF0u})
            EXPECT_EQ(Ask(blank, ReadRequest(address)), alternating(0xFF, 0xFF)) << type;
        EXPECT_EQ(Ask(blank, ReadRequest(0x4000)), Bytes{17} + Bytes(15, 0xFF) + Bytes{0x3F});
    }
}

TEST_F(BoardEngineTest, Type1DeliversProgramMemoryAsOneStream) {
    BoardEngine small(clock.Reading(), {1, 512, 0});
    auto& memory = small.Memory();
    memory.Write(0x0000, Bytes{0x01, 0x0A, 0x02, 0x0A});
    memory.Write(0x03FC, Bytes{0xF0, 0x05, 0xF1, 0x05});
    memory.Write(0x4000, Bytes{0xD0, 0x00, 0xD1, 0x00, 0xD2, 0x00, 0xD3, 0x00});
    memory.Write(0x400E, Bytes{0xEA, 0x0C});

    const auto first = Ask(small, ReadRequest(0x0000));
    EXPECT_EQ(Bytes(first.begin(), first.begin() + 7),
              (Bytes{17, 0xEA, 0x0C, 0x01, 0x0A, 0x02, 0x0A}));
    const auto last = Ask(small, ReadRequest(0x03F0));
    EXPECT_EQ(Bytes(last.end() - 2, last.end()), (Bytes{0xF0, 0x05}));
    EXPECT_EQ(Ask(small, ReadRequest(0x0400)),
              (Bytes{17, 0xF1, 0x05, 0xD0, 0, 0xD1, 0, 0xD2, 0, 0xD3, 0, 0xFF, 0x0F, 0xFF, 0x0F,
                     0xFF, 0x0F}));
    EXPECT_EQ(Ask(small, ReadRequest(0x4000)).back(), 0x0C) << "the ID block keeps its place";
}

TEST_F(BoardEngineTest, TheLetterToldLastDecidesOnTheStreamForReadsOnly) {
    FillWithAddresses(board.Memory());
    const auto plain = Ask(board, ReadRequest(0));
    EXPECT_EQ(Ask(board, Command('a') + ReadRequest(0))[1], board.Memory().ByteAt(0x400E));
    EXPECT_EQ(Ask(board, ReadRequest(0x4000))[3], board.Memory().ByteAt(0x4000))
        << "the closing block of the largest device lies where the ID block would";
    Ask(board, Command('W') + WriteRequest(0, 8, Counting(0x40)));
    EXPECT_EQ(board.Memory().ByteAt(0), 0x40);
    EXPECT_EQ(Ask(board, Command('b') + ReadRequest(0)), Bytes{17} + Counting(0x40));
    EXPECT_NE(plain[1], 0x40);
}

TEST_F(BoardEngineTest, WritesBlocksInsideASequenceOnlyAndAsManyWordsAsTold) {
    const Bytes written{3, 0, 0};
    EXPECT_EQ(Ask(board, WriteRequest(0x1220, 8, Counting(1))), (Bytes{3, 1, 0x20}));
    EXPECT_EQ(Ask(board, Command('W') + WriteRequest(0x1220, 8, Counting(1))), written);
    EXPECT_EQ(Ask(board, ReadRequest(0x1220)), Bytes{17} + Counting(1)) << "bits are not masked";
    EXPECT_EQ(Ask(board, WriteRequest(0x4200, 3, Counting(0x80))), written);
    EXPECT_EQ(Ask(board, ReadRequest(0x4200)),
              (Bytes{17, 0x80, 0x81, 0x82, 0x83, 0x84, 0x85} + Bytes(10, 0xFF)));
    EXPECT_EQ(Ask(board, WriteRequest(0x4000, 8, Counting(0xC0))), written);
    EXPECT_EQ(Ask(board, WriteRequest(0x0010, 0, Counting(9))), written);
    EXPECT_EQ(Ask(board, WriteRequest(0x0010, 9, Counting(9))), (Bytes{3, 1, 0x10}));
    EXPECT_EQ(board.Memory().ByteAt(0x10), 0xFF);

    EXPECT_EQ(Ask(board, Command('W') + WriteRequest(0x30, 8, Counting(1))), (Bytes{3, 1, 0x30}));
    for (const char closing : {'I', 'g'})
        EXPECT_EQ(Ask(board, Command('W') + Command(closing) + WriteRequest(0x30, 8, Counting(1))),
                  (Bytes{3, 1, 0x30}));
    EXPECT_EQ(Ask(board, ReadRequest(0x4000)), Bytes{17} + Counting(0xC0));
}

TEST_F(BoardEngineTest, RefusesWritesWhereTheDeviceEndsWithTheFailingLowByte) {
    BoardEngine odd(clock.Reading(), {7, 0x912, 12});
    Ask(odd, Command('W'));
    EXPECT_EQ(Ask(odd, WriteRequest(0x1220, 8, Counting(1))), (Bytes{3, 1, 0x24}));
    EXPECT_EQ(odd.Memory().ByteAt(0x1223), 4) << "the words in front of the end are written";
    EXPECT_EQ(Ask(odd, WriteRequest(0x1220, 2, Counting(1))), (Bytes{3, 0, 0}));
    EXPECT_EQ(Ask(odd, WriteRequest(0x4210, 8, Counting(1))), (Bytes{3, 1, 0x18}));
    EXPECT_EQ(Ask(odd, WriteRequest(0x4220, 8, Counting(1))), (Bytes{3, 1, 0x20}));
    EXPECT_EQ(Ask(odd, WriteRequest(0x4008, 8, Counting(1))), (Bytes{3, 1, 0x10}));
    EXPECT_EQ(Ask(odd, WriteRequest(0xFFF8, 8, Counting(1))), (Bytes{3, 1, 0xF8}));
}

TEST_F(BoardEngineTest, EachEraseBlanksItsOwnRegionAndNoOther) {
    const DeviceShape shape{3, 16, 16};
    const struct {
        char letter;
        std::uint32_t first, last;
    } regions[] = {
        {'E', 0x0000, 0x001F}, {'F', 0x4200, 0x421F}, {'G', 0x4000, 0x400D}, {'H', 0x400E, 0x400F}};
    const DeviceMemory blank(shape);
    for (const auto& region : regions) {
        BoardEngine engine(clock.Reading(), shape);
        auto& memory = engine.Memory();
        std::vector<std::uint32_t> held;
        for (std::uint32_t address = 0; address < 0x4400; ++address)
            if (memory.SetByte(address, 0x55))
                held.push_back(address);
        ASSERT_EQ(held.size(), 32u + 16u + 32u);
        EXPECT_THAT(Ask(engine, Command(region.letter)), IsEmpty());
        for (const auto address : held) {
            const bool erased = address >= region.first && address <= region.last;
            EXPECT_EQ(memory.ByteAt(address), erased ? blank.ByteAt(address) : 0x55)
                << region.letter << std::hex << address;
        }
    }
}

}  // namespace
}  // namespace Tamber::Simulator
