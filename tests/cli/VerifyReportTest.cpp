#include "cli/CliBench.hpp"
#include "cli/Differences.hpp"

namespace Tamber::Cli {
namespace {

const DeviceRecord Device{"device", 7, 64, 16, 1};

MemoryImage Blank() {
    MemoryImage image;
    image.ClearProgramMemory(7);
    image.ClearEeprom();
    image.ClearConfiguration();
    return image;
}

MemoryImage Counting() {
    MemoryImage image = Blank();
    for (int word = 0; word < Device.ProgramWords; ++word)
        image.SetByte(2 * word, static_cast<std::uint8_t>(word));
    return image;
}

std::string CauseOf(const MemoryImage& expected, const MemoryImage& found) {
    const auto differences = FindDifferences(expected, found, Device, {true, false, false, false});
    return differences.empty() ? "none" : differences.front().LikelyCause;
}

TEST(Differences, TheCauseIsSeenWhereItCanBe) {
    const MemoryImage image = Counting();
    MemoryImage zero = image, lower = image, higher = image, oneWord = image;
    for (int index = 0; index < 2 * Device.ProgramWords; ++index)
        zero.SetByte(index, 0);
    for (int index = 0; index < 2 * Device.ProgramWords - 2; ++index) {
        lower.SetByte(index, image.Byte(index + 2));
        higher.SetByte(index + 2, image.Byte(index));
    }
    oneWord.SetByte(6, 0);
    EXPECT_EQ(CauseOf(image, image), "none");
    EXPECT_THAT(CauseOf(image, Blank()), HasSubstr("reads blank"));
    EXPECT_THAT(CauseOf(image, zero), HasSubstr("reads zero"));
    EXPECT_THAT(CauseOf(image, lower), HasSubstr("one address below"));
    EXPECT_THAT(CauseOf(image, higher), HasSubstr("one address above"));
    EXPECT_EQ(CauseOf(image, oneWord), "");
    // A file of one word all through is never seen as shifted.
    MemoryImage lastWord = Blank();
    lastWord.SetByte(2 * Device.ProgramWords - 1, 0);
    EXPECT_EQ(CauseOf(Blank(), lastWord), "");
}

TEST_F(CliTest, VerifyTellsEveryDifferenceBehindTheDialogsLines) {
    const std::string sample = Sample("greeting-16f84a");
    ASSERT_EQ(Run({"program", sample}).Status, 0);
    EXPECT_EQ(Run({"verify", sample}).Status, 0);
    const auto quietWire = Wire();
    for (const std::uint32_t address : {0x0025u, 0x00F0u, 0x07FEu, 0x4202u, 0x4203u, 0x4006u})
        engine->Memory().SetByte(address, 0x11);
    const Ran ran = Run({"verify", sample});
    EXPECT_EQ(ran.Status, 8);
    EXPECT_EQ(ran.Out,
              "Verify Error at 0025\n"
              "Verify Error at 0002\n"
              "Verify Error at ID Locs\n"
              "Verifying Conig Word...   OK!\n"
              "program memory: 3 of 1024 words differ\n"
              "  address  expected  found\n"
              "     0012      300D   110D\n"
              "     0078      3FFF   3F11\n"
              "     03FF      3FFF   3F11\n"
              "EEPROM: 1 of 64 words differ\n"
              "  address  expected  found\n"
              "     0001      0048   0011\n"
              "ID locations: 1 of 4 words differ\n"
              "  address  expected  found\n"
              "     0003      000A   0011\n");
    const Ran told = Run({"verify", sample, "--json"});
    EXPECT_EQ(told.Fact("/differences/0/count"), "3");
    EXPECT_EQ(told.Fact("/differences/0/list/1"),  // 0x78, 0x3FFF, 0x3F11
              R"({"address":120,"expected":16383,"found":16145})");
    // Without a difference the wire is the dialog's: 128 + 8 + 1 blocks, closed four times.
    EXPECT_EQ(quietWire.size(), 2u + 2 * 137 + 4);
}

TEST_F(CliTest, ADifferenceThatIsGoneAtTheSecondReadingIsCalledUnsteady) {
    ASSERT_EQ(Run({"program", Sample("greeting-16f84a")}).Status, 0);
    const auto memory = engine->Memory();
    Simulator::FaultPlan faults;
    faults.AlteredByte = {3, 5, 0xEE};
    Socket({7, 1024, 64}, faults);
    engine->Memory() = memory;
    const Ran ran = Run({"verify", Sample("greeting-16f84a")});
    EXPECT_EQ(ran.Status, 8);
    EXPECT_THAT(ran.Errors, HasSubstr("not steady"));
}

// The dialog's verify of these devices passes over every eighth word.
TEST_F(CliTest, OfAStreamEveryWordIsCompared) {
    Socket({1, 512, 0});
    const std::vector<std::string> words{"verify", Sample("beacon-12c508a"), "--device",
                                         "PIC12C508A"};
    ASSERT_EQ(Run({"program", words[1], words[2], words[3]}).Status, 0);
    EXPECT_EQ(Run(words).Status, 0);
    engine->Memory().SetByte(0x0E, 0x77);
    const Ran ran = Run(words);
    EXPECT_EQ(ran.Status, 8);
    EXPECT_THAT(ran.Out, HasSubstr("Verifying Program Memory...   OK!\n"));
    EXPECT_THAT(ran.Out, HasSubstr("program memory: 1 of 512 words differ"));
}

}  // namespace
}  // namespace Tamber::Cli
