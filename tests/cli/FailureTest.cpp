#include "cli/CliBench.hpp"

namespace Tamber::Cli {
namespace {

struct Failure {
    std::vector<std::string> words;  // "SAMPLE" stands for the sample's file
    int status;
    std::string outcome;
    std::string said;  // part of standard error
    Simulator::FaultPlan faults;
    std::string lastLine;  // of standard output; empty: there is none
};

void PrintTo(const Failure& failure, std::ostream* out) {
    *out << failure.words.front() << " ends with " << failure.status;
}

Simulator::FaultPlan Silent(int from) {
    Simulator::FaultPlan faults;
    faults.SilentFrom = from;
    return faults;
}

Simulator::FaultPlan Refusing() {
    Simulator::FaultPlan faults;
    faults.RefusedWrite = {0x50, 0x5A};
    return faults;
}

// Each status but those of the interruption and of a refused port, which have tests of their own.
const Failure Failures[] = {
    {{"blank", "--device", "PIC99"}, 2, "usage", "knows no device \"PIC99\"", {}, ""},
    {{"program", "none.hex"}, 3, "file", "none.hex: No such file or directory", {}, ""},
    {{"identify"}, 5, "no-board", "Nothing answers at /dev/ttyS0", Silent(1), ""},
    {{"read", "out.hex"},
     6,
     "board-silent",
     "Device Error: Communication Error!",
     Silent(4),
     "Reading Program Memory...   Device Fault!"},
    {{"program", "SAMPLE", "--only", "pm"},
     7,
     "programming-failed",
     "programming failed",
     Refusing(),
     "Program Error at 002D"},
    {{"auto", "SAMPLE"},
     7,
     "programming-failed",
     "programming failed",
     Refusing(),
     "Programming ID and Config...   OK!"},
    {{"auto", "SAMPLE"},
     6,
     "board-silent",
     "stopped answering",
     Silent(270),
     "Programming EEPROM...   Device Fault!"},
    {{"verify", "SAMPLE", "--only", "config"},
     8,
     "differences",
     "verify found differences",
     {},
     "     0000      3FF1   3FFF"},
    {{"erase", "--device", "PIC16C74B"}, 10, "no-erase", "Erase Function Not Available!", {}, ""},
};

class Fails : public CliTest, public testing::WithParamInterface<Failure> {};

TEST_P(Fails, WithItsStatusItsWordsAndAsJson) {
    const Failure& failure = GetParam();
    auto words = failure.words;
    std::ranges::replace(words, "SAMPLE", Sample("greeting-16f84a"));
    Socket({7, 1024, 64}, failure.faults);
    const Ran ran = Run(words);
    EXPECT_EQ(ran.Status, failure.status);
    EXPECT_THAT(ran.Errors, HasSubstr(failure.said));
    EXPECT_THAT(ran.Out,
                testing::EndsWith(failure.lastLine.empty() ? "" : failure.lastLine + "\n"));
    EXPECT_EQ(ran.Out.empty(), failure.lastLine.empty());

    words.push_back("--json");
    Socket({7, 1024, 64}, failure.faults);
    const Ran again = Run(words);
    EXPECT_EQ(again.Status, failure.status);
    EXPECT_EQ(again.Fact("/status"), std::to_string(failure.status));
    EXPECT_EQ(again.Fact("/outcome"), failure.outcome);
    EXPECT_NE(again.Fact("/message"), "");
}

INSTANTIATE_TEST_SUITE_P(EachWay, Fails, testing::ValuesIn(Failures));

// The identification takes 20 ms; the time-out that ends the run takes its second and no more.
TEST_F(CliTest, APortThatGoesAwayEndsTheRunWithinTheTimeOut) {
    Socket({7, 1024, 64}, Silent(4));
    desktop.intrude = [this] { desktop.portLost = Wire().size() >= 6; };
    const Ran ran = Run({"program", Sample("greeting-16f84a")});
    EXPECT_EQ(ran.Status, 6);
    EXPECT_EQ(ran.Out, "Programming Program Memory...   Device Fault!\n");
    EXPECT_THAT(ran.Errors, HasSubstr("The port went away."));
    EXPECT_EQ(desktop.now, std::chrono::milliseconds(1020));
}

TEST_F(CliTest, ABlankCheckThatFailsHasAStatusOfItsOwn) {
    engine->Memory().SetByte(0x24, 0);
    const Ran ran = Run({"blank", "--json"});
    EXPECT_EQ(ran.Status, 9);
    EXPECT_EQ(ran.Fact("/functions/0/name"), "Blank");
    EXPECT_EQ(ran.Fact("/functions/0/lines/0"), "PM not blank at 0012");
}

TEST_F(CliTest, AFolderThatCannotBeUsedIsNamedWithItsFault) {
    folder.Write("tamber.cfg", "1\r\n24\r\nmany\r\n");
    const Ran ran = Run({"blank"});
    EXPECT_EQ(ran.Status, 3);
    EXPECT_THAT(ran.Errors, AllOf(HasSubstr("tamber.cfg, line 3, field 1"), HasSubstr("\"many\"")));
    EXPECT_EQ(Run({"identify", "--port", "x"}).Status, 0) << "which needs no folder";
    folder.Write("tamber.cfg", "1\r\n24\r\n0\r\n");
    EXPECT_THAT(Run({"blank"}).Errors, HasSubstr("select no device"));
}

TEST_F(CliTest, AFileTheLoaderRefusesReachesNoDevice) {
    const std::string good = FileText(Sample("greeting-16f84a"));
    auto changed = good;
    char& digit = changed[good.find("051486")];
    digit = '1';
    const Ran ran = Run({"program", "-"}, changed);
    EXPECT_EQ(ran.Status, 3);
    EXPECT_THAT(ran.Errors, AllOf(HasSubstr("File Load Error: Checksum Error in hex file!"),
                                  HasSubstr("Line ")));
    EXPECT_EQ(
        Run({"program", "-"}, ":0800000000280139013A013B013C013D013E013F5C\n:00000001FF\n").Status,
        3)
        << "words counted where bytes belong";
    EXPECT_TRUE(Wire().empty());
}

TEST_F(CliTest, AnEraseThatIsRefusedInASeriesIsToldAtItsEnd) {
    Socket({6, 4096, 0});
    const Ran ran = Run({"auto", Sample("greeting-16f84a"), "--device", "PIC16C74B"});
    EXPECT_EQ(ran.Status, 10);
    EXPECT_THAT(ran.Out, testing::EndsWith("Verifying Conig Word...   OK!\n"));
}

}  // namespace
}  // namespace Tamber::Cli
