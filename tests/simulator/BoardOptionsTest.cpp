#include "simulator/BoardBench.hpp"
#include "simulator/BoardOptions.hpp"

namespace Tamber::Simulator {
namespace {

using Arguments = std::vector<std::string_view>;

TEST(BoardOptions, EveryOptionGoesWhereItBelongs) {
    const Arguments arguments{"--link",
                              "com1",
                              "--type",
                              "1",
                              "--words",
                              "0x200",
                              "--eeprom",
                              "0",
                              "--load",
                              "in.hex",
                              "--save",
                              "out.hex",
                              "--name",
                              "AB",
                              "--version",
                              "2.5",
                              "--pace",
                              "57600",
                              "--trace",
                              "--silent-from",
                              "7",
                              "--delay",
                              "3:1500",
                              "--reply-length",
                              "4:16",
                              "--alter-reply",
                              "5:0:0xFF",
                              "--refuse-write",
                              "0x4200:0x10",
                              "--identification-length",
                              "9",
                              "--hang-up",
                              "8",
                              "--hang-up-in-reply",
                              "6"};
    const auto parsed = ParseOptions(arguments);
    ASSERT_TRUE(std::holds_alternative<BoardOptions>(parsed)) << std::get<std::string>(parsed);
    const auto& options = std::get<BoardOptions>(parsed);
    EXPECT_EQ(options.link, "com1");
    EXPECT_EQ(options.device.typeCode, 1);
    EXPECT_EQ(options.device.programWords, 512);
    EXPECT_EQ(options.device.eepromBytes, 0);
    EXPECT_EQ(options.loadFile, "in.hex");
    EXPECT_EQ(options.saveFile, "out.hex");
    EXPECT_EQ(options.identification.name, "AB");
    EXPECT_EQ(options.identification.major, '2');
    EXPECT_EQ(options.identification.minor, '5');
    EXPECT_EQ(options.pace, 57600u);
    EXPECT_TRUE(options.trace);
    EXPECT_FALSE(options.help);
    const auto& faults = options.faults;
    EXPECT_EQ(faults.silentFrom, 7);
    EXPECT_EQ(faults.delay->request, 3);
    EXPECT_EQ(faults.delay->time, std::chrono::milliseconds(1500));
    EXPECT_EQ(faults.replyLength->request, 4);
    EXPECT_EQ(faults.replyLength->length, 16u);
    EXPECT_EQ(faults.alteredByte->request, 5);
    EXPECT_EQ(faults.alteredByte->value, 0xFF);
    EXPECT_EQ(faults.refusedWrite->block, 0x4200);
    EXPECT_EQ(faults.refusedWrite->lowByte, 0x10);
    EXPECT_EQ(faults.identificationLength, 9u);
    EXPECT_EQ(faults.hangUpAtRequest, 8);
    EXPECT_EQ(faults.hangUpInReply, 6);
}

TEST(BoardOptions, WrongArgumentsAreNamedInTheComplaint) {
    const Arguments wrong[] = {
        {"--speed", "1"},
        {"com1"},
        {"--link"},
        {"--link", ""},
        {"--type", "0"},
        {"--type", "27"},
        {"--words", "8193"},
        {"--words", "-1"},
        {"--eeprom", "257"},
        {"--words", "10x"},
        {"--words", "0x"},
        {"--words", "0x-1"},
        {"--name", "SIXSIX"},
        {"--version", "10"},
        {"--pace", "0"},
        {"--reply-length", "4"},
        {"--delay", "1:2:3"},
        {"--alter-reply", "1:2"},
        {"--refuse-write", "16"},
        {"--silent-from", "99999999999"},
    };
    for (const auto& arguments : wrong) {
        const auto parsed = ParseOptions(arguments);
        const auto* const complaint = std::get_if<std::string>(&parsed);
        ASSERT_NE(complaint, nullptr) << arguments.front();
        EXPECT_TRUE(complaint->starts_with(arguments.front())) << *complaint;
    }
}

}  // namespace
}  // namespace Tamber::Simulator
