#include <algorithm>

#include "cli/CliBench.hpp"

namespace Tamber::Cli {
namespace {

struct OddFile {
    std::string what;
    std::string text;
    int status;
    std::string told;  // a line of the output, whole
};

void PrintTo(const OddFile& odd, std::ostream* out) {
    *out << odd.what;
}

const std::string Good = ":04000000012800349F\n";
const std::string End = ":00000001FF\n";

const OddFile OddFiles[] = {
    {"empty", "", 3,
     "Line 1: The file has no end record. It may have been cut off; have it made or copied again. "
     "The last line of a whole file is :00000001FF."},
    {"no end record", Good, 3,
     "Line 2: The file has no end record. It may have been cut off; have it made or copied again. "
     "The last line of a whole file is :00000001FF."},
    {"empty line", Good + "\n" + End, 3,
     "Line 2: The line is empty. Delete it; the loader takes no line without a record."},
    {"wrong checksum", ":04000000012800349E\n" + End, 3,
     "Line 1, column 18: The checksum is 9E; the digits before it ask for 9F. A character of the "
     "line has changed; have the file made or copied again."},
    {"a letter among the digits", ":04000000012800x49F\n" + End, 3,
     "Line 1, column 16: \"x\" is not a hexadecimal digit. Have the file made again."},
    {"a blank at the end", ":04000000012800349F \n" + End, 3,
     "Line 1, column 20: a blank is not a hexadecimal digit. Delete what follows the record."},
    {"two blanks at the end", ":04000000012800349F  \n" + End, 0,
     "Line 1, column 20: a blank is not a hexadecimal digit. Delete what follows the record."},
    {"a digit missing", ":04000000012800349\n" + End, 3,
     "Line 1, column 19: The digits do not come in pairs; one is missing or too many. Have the "
     "file made again."},
    {"cut line", ":04000000\n" + End, 3,
     "Line 1, column 10: The line ends before its record does. The file may have been cut off; "
     "have it made or copied again."},
    {"another first character", "x04000000012800349F\n" + End, 0,
     "Line 1, column 1: \"x\" stands where the colon of a record belongs. Put the colon there, or "
     "delete the line if it is not a record."},
    {"byte-order mark",
     "\xEF\xBB\xBF"
     ":04000000012800349F\n" +
         End,
     3,
     "Line 1, column 1: A byte-order mark stands in front of the record. Save the file as plain "
     "ASCII, without the mark."},
    {"S-records", "S00600004844521B\nS9030000FC\n", 3,
     "Line 1, column 1: This is an S-record, not an Intel HEX record. Have the file written as "
     "Intel HEX."},
    {"byte count too large", ":06000000012800349D\n" + End, 0,
     "Line 1, column 2: The byte count promises 6 data bytes, the line holds 4. The line may have "
     "been cut off; have the file made again."},
    {"byte count too small", ":0200000001280034A1\n:020010000128C5\n" + End, 0,
     "Line 1, column 2: The byte count promises 2 data bytes, the line holds 4. The bytes after "
     "them are lost; have the file made again."},
    {"unknown type", ":0000000AF6\n" + End, 0,
     "Line 1, column 8: No record has the type 0A. Have the file made again."},
    {"end record with data", ":04000001012800349E\n", 0,
     "Line 1, column 2: The end record carries data, which is ignored. Have the file made "
     "again."},
    {"lines behind the end", End + Good + "nonsense\n", 0,
     "2 lines after the end record are ignored."},
    {"extended address", ":020000040001F9\n:04000000012800349F\n" + End, 0,
     "Line 1: The record of type 04 (extended linear address, 0001) is ignored. The records after "
     "it are loaded at their own addresses, where they do not belong."},
    {"start address", ":0400000500000000F7\n" + End, 0,
     "Line 1: The record of type 05 (start linear address, 0000) is ignored."},
    {"overlap", ":04000000012800349F\n:020002000135C6\n" + End, 0,
     "Line 2: Byte address 0002-0003 is stored again, after line 1. The bytes differ and the later "
     "ones count."},
    {"the same again", ":04000000012800349F\n:020002000034C8\n" + End, 0,
     "Line 2: Byte address 0002-0003 is stored again, after line 1. The bytes are the same."},
    {"beyond the device", ":0207FE000128D0\n:020800000128CD\n:02428000013407\n" + End, 0,
     "  outside the device        2 words at byte address 0800-0801, 4280-4281, never programmed"},
};

class Inspects : public CliTest, public testing::WithParamInterface<OddFile> {};

TEST_P(Inspects, AnOddFile) {
    const OddFile& odd = GetParam();
    const Ran ran = Run({"inspect", "-"}, odd.text);
    EXPECT_EQ(ran.Status, odd.status) << odd.what << "\n" << ran.Out << ran.Errors;
    EXPECT_THAT("\n" + ran.Out, HasSubstr("\n" + odd.told + (odd.told.empty() ? "" : "\n")))
        << odd.what;
    // What the loader says is what the loader does.
    EXPECT_EQ(Run({"program", "-"}, odd.text).Status, odd.status) << odd.what;
}

INSTANTIATE_TEST_SUITE_P(Table, Inspects, testing::ValuesIn(OddFiles));

TEST_F(CliTest, InspectTellsWhatLiesWhere) {
    const Ran ran = Run({"inspect", Sample("greeting-16f84a")});
    EXPECT_EQ(ran.Status, 0);
    EXPECT_EQ(ran.Out,
              "21 lines, 19 data records; for PIC16F84A:\n"
              "  program memory            101 words at 0000-0064\n"
              "  ID locations              0008040A (low bytes, of 4 words)\n"
              "  configuration word        3FF1\n"
              "  EEPROM                    31 bytes at 0000-001E\n"
              "  checksum                  234B (as the program-memory view shows it)\n"
              "Line 1: The record of type 04 (extended linear address, 0000) is ignored.\n");
    EXPECT_TRUE(Wire().empty());
}

TEST_F(CliTest, InspectKnowsWhereAssemblersPutThingsForTwelveBitDevices) {
    const std::string sample = Sample("beacon-12c508a");
    const Ran ran = Run({"inspect", sample, "--device", "PIC12C508A"});
    EXPECT_EQ(ran.Status, 0);
    EXPECT_THAT(ran.Out, AllOf(HasSubstr("The configuration word 0FEE stands at byte address 1FFE; "
                                         "the image keeps it at 400E.\n"),
                               HasSubstr("The ID locations stand at byte address 0400; "
                                         "the image keeps them at 4000.\n"),
                               Not(HasSubstr("outside"))));
    // With the lines it names, the loader puts both where they are programmed.
    std::string text = FileText(sample);
    for (const std::string line : {":084000000000050000000800AB", ":02400E00EE0FB3"})
        if (ran.Out.find("  " + line + "\n") != std::string::npos)
            text.insert(text.find(":00000001FF"), line + "\n");
    const Ran told = Run({"inspect", "-", "--device", "PIC12C508A", "--json"}, text);
    EXPECT_EQ(told.Fact("/inspection/configurationWord"), std::to_string(0x0FEE));
    EXPECT_EQ(told.Fact("/inspection/assemblerConfigurationWord"), std::to_string(0x0FEE));
    EXPECT_THAT(told.Fact("/inspection/places"), HasSubstr(R"("place":"id-locations","words":4)"));
    // For a 14-bit device the same bytes are program words like any others.
    EXPECT_THAT(Run({"inspect", sample}).Out,
                HasSubstr("outside the device        1 word at byte address 1FFE-1FFF"));
}

// The words 1405 0186 1683 0185, as assemblers write them.
TEST_F(CliTest, InspectNamesWordAddressedFiles) {
    const struct {
        std::string text;
        bool wordAddressed;
    } files[] = {
        {":0400000014050186168301853D\n", true},
        {":08000000140501861683018539\n:08000400140501861683018535\n", true},
        {":08000000051486018316850139\n:08000800051486018316850131\n", false},
        {":08000000140501861683018539\n:08001000140501861683018529\n", false},  // in doubt
        {"", false},
    };
    for (const auto& [text, wordAddressed] : files) {
        const Ran ran = Run({"inspect", "-", "--json"}, text + End);
        EXPECT_EQ(ran.Fact("/inspection/wordAddressed"), wordAddressed ? "true" : "false") << text;
        EXPECT_EQ(ran.Fact("/inspection/malformedTotal"), "0") << text;
        EXPECT_EQ(ran.Status, wordAddressed ? 3 : 0) << text;
    }
}

TEST_F(CliTest, OfManyMalformedLinesTheFirstHundredAreTold) {
    std::string text;
    for (int line = 0; line < 250; ++line)
        text += "nonsense\n";
    const Ran ran = Run({"inspect", "-"}, text + End);
    EXPECT_THAT(ran.Out, HasSubstr("... and 150 more of the same kinds.\n"));
    EXPECT_EQ(std::count(ran.Out.begin(), ran.Out.end(), '\n'), 1 + 1 + 100 + 1);
}

}  // namespace
}  // namespace Tamber::Cli
