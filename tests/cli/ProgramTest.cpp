#include <signal.h>

#include <cstdlib>
#include <thread>

#include "cli/CliBench.hpp"
#include "cli/PortLink.hpp"
#include "endtoend/Desktop.hpp"

namespace Tamber::Cli {
namespace {

using namespace std::chrono_literals;

// The built program and the built board, over a real pseudo-terminal.
class ProgramTest : public testing::Test {
  protected:
    ProgramTest() {
        std::filesystem::copy(SAMPLE_DATA, folder.Path(), std::filesystem::copy_options::recursive);
    }

    void StartBoard(std::vector<std::string> options) {
        options.insert(options.begin(), {BOARD_PROGRAM, "--link", folder / "com1"});
        board = std::make_unique<Process>(options, folder.Path(), folder / "board.log");
        WaitFor("board.log", "ready");
    }

    // What the program prints on both streams goes to "out.txt".
    std::unique_ptr<Process> Start(const std::string& arguments) {
        std::filesystem::remove(folder / "out.txt");
        return std::make_unique<Process>(
            std::vector<std::string>{"/bin/sh", "-c", "exec " CLI_PROGRAM " " + arguments},
            folder.Path(), folder / "out.txt");
    }

    int Run(const std::string& arguments) { return Start(arguments)->Wait(); }
    std::string Output() const { return FileText(folder / "out.txt"); }

    // True once `text` stands in the file; patience is far above what anything here takes.
    bool WaitFor(const std::string& file, const std::string& text) const {
        const auto deadline = std::chrono::steady_clock::now() + 20s;
        while (!std::filesystem::exists(folder / file) ||
               FileText(folder / file).find(text) == std::string::npos) {
            if (std::chrono::steady_clock::now() > deadline)
                return false;
            std::this_thread::sleep_for(5ms);
        }
        return true;
    }

    TestFolder folder;
    std::unique_ptr<Process> board;
};

TEST_F(ProgramTest, TheWholeJobOverAPseudoTerminal) {
    StartBoard({});
    EXPECT_EQ(Run("auto samples/greeting-16f84a.hex"), 0) << Output();
    EXPECT_THAT(Output(), AllOf(testing::EndsWith("Verifying Conig Word...   OK!\n"),
                                Not(HasSubstr("\x1B"))));
    EXPECT_EQ(Run("verify samples/greeting-16f84a.hex --json"), 0);
    EXPECT_EQ(JsonFact(Output(), "/board/name"), "TAMBR");
    EXPECT_EQ(Run("read - 2>/dev/null | " CLI_PROGRAM " verify - --only eeprom"), 0);
}

TEST_F(ProgramTest, EachCommandOverAPseudoTerminal) {
    StartBoard({"--load", "samples/greeting-16f84a.hex", "--name", "BENCH"});
    const struct {
        std::string arguments;
        int status;
        std::string said;
    } commands[] = {
        {"identify", 0, "Device: BENCH\nVersion 1.0\n"},
        {"devices -q --device pic16f877a", 0, "* PIC16F877A "},
        {"ports", 0, "/com1 -> /dev/pts/"},
        {"inspect samples/greeting-16f84a.hex", 0, "checksum                  234B"},
        {"verify samples/greeting-16f84a.hex", 0, "Verifying Conig Word...   OK!\n"},
        {"blank --only eeprom", 9, "EEPROM not blank at 0000\n"},
        {"read out.hex", 0, "Reading EEPROM...   OK!\n"},
        {"erase --only eeprom", 0, "Erasing EEPROM...   OK!\n"},
        {"blank --only eeprom", 0, "Blank Checking EEPROM...   OK!\n"},
        {"verify out.hex", 8, "EEPROM: 31 of 64 words differ\n"},
        {"program out.hex --only eeprom", 0, "Programming EEPROM...   OK!\n"},
        {"verify out.hex -q", 0, ""},
    };
    for (const auto& [arguments, status, said] : commands) {
        EXPECT_EQ(Run(arguments), status) << arguments << "\n" << Output();
        EXPECT_THAT(Output(), HasSubstr(said)) << arguments;
    }
}

TEST_F(ProgramTest, AStablePathIsTheLinkThatLeadsToThePort) {
    std::filesystem::create_directory(folder / "by-id");
    folder.Write("port", "");
    folder.Write("other", "");
    std::filesystem::create_symlink("../other", folder / "by-id" / "usb-other");
    std::filesystem::create_symlink("../port", folder / "by-id" / "usb-adapter");
    std::filesystem::create_symlink("../gone", folder / "by-id" / "usb-gone");
    EXPECT_EQ(StablePathOf(folder / "port", folder / "by-id"), folder / "by-id" / "usb-adapter");
    EXPECT_EQ(StablePathOf(folder / "none", folder / "by-id"), "");
    EXPECT_EQ(StablePathOf(folder / "port", folder / "no-such-folder"), "");
}

TEST_F(ProgramTest, InterruptedOnceItClosesTheSequenceAndTwiceItIsGone) {
    StartBoard({"--trace", "--delay", "10"});
    auto program = Start("program samples/greeting-16f84a.hex");
    ASSERT_TRUE(WaitFor("board.log", "> 14 00 40"));
    program->Signal(SIGINT);
    EXPECT_EQ(program->Wait(), 130);
    EXPECT_THAT(Output(), HasSubstr("Programming Program Memory...   Interrupted!\n"));
    ASSERT_TRUE(WaitFor("board.log", "> 01 57 ; write sequence closes"));
    ASSERT_TRUE(WaitFor("board.log", "> 01 49 ; end"));
    EXPECT_THAT(FileText(folder / "board.log"), Not(HasSubstr("> 14 02 00")));

    program = Start("program samples/greeting-16f84a.hex --trace twice.txt");
    ASSERT_TRUE(WaitFor("twice.txt", "> 14 00 40"));
    program->Signal(SIGINT);
    program->Signal(SIGTERM);
    EXPECT_EQ(program->Wait(), 130);
    EXPECT_THAT(FileText(folder / "twice.txt"), Not(HasSubstr("> 01 49")));
}

TEST_F(ProgramTest, APortThatGoesAwayEndsTheRunWithinTheTimeOut) {
    StartBoard({"--hang-up", "30"});
    EXPECT_EQ(Run("program samples/greeting-16f84a.hex --trace first.txt"), 6);
    EXPECT_THAT(Output(), HasSubstr("The port went away."));

    // The board's trouble is in the trace and can be had again.
    EXPECT_EQ(board->Wait(), 0);
    StartBoard({"--replay", "first.txt"});
    EXPECT_EQ(Run("program samples/greeting-16f84a.hex --trace second.txt"), 6);
    EXPECT_THAT(Output(), HasSubstr("The port went away."));
    const auto bytes = [this](const std::string& file) {
        std::string all;
        std::istringstream lines(FileText(folder / file));
        for (std::string line; std::getline(lines, line);)
            all += line.substr(line.find(' ')) + "\n";
        return all;
    };
    EXPECT_EQ(bytes("second.txt"), bytes("first.txt"));
}

TEST_F(ProgramTest, PortsThatAreNoneAndTracesThatAreNone) {
    EXPECT_EQ(Run("blank --port ./samples/greeting-16f84a.hex"), 4) << Output();
    EXPECT_THAT(Output(), HasSubstr("Communication Port Error: "));
    folder.Write("trace.txt", "0.000000 > 01 54 ; identify\nwhat is this\n");
    Process refused({BOARD_PROGRAM, "--replay", "trace.txt"}, folder.Path(), folder / "log");
    EXPECT_EQ(refused.Wait(), 2);
    EXPECT_THAT(FileText(folder / "log"), HasSubstr("trace.txt:2: no ; before a gloss"));
    Process both({BOARD_PROGRAM, "--replay", "trace.txt", "--delay", "1"}, folder.Path(),
                 folder / "log");
    EXPECT_EQ(both.Wait(), 2);
}

TEST_F(ProgramTest, ItRunsWithoutAnyPartOfADisplay) {
    Process listing({"/usr/bin/ldd", CLI_PROGRAM}, folder.Path(), folder / "libraries.txt");
    ASSERT_EQ(listing.Wait(), 0);
    const std::string libraries = FileText(folder / "libraries.txt");
    EXPECT_THAT(libraries, HasSubstr("libQt6SerialPort"));
    for (const std::string part : {"libX11", "libxcb", "wayland", "libQt6Gui", "libQt6Widgets"})
        EXPECT_THAT(libraries, Not(HasSubstr(part)));
}

TEST_F(ProgramTest, HelpTellsEveryStatus) {
    EXPECT_EQ(Run("--help"), 0);
    for (const StatusMeaning& meaning : StatusMeanings())
        EXPECT_THAT(Output(), HasSubstr("  " + std::to_string(static_cast<int>(meaning.Status)) +
                                        "  " + std::string(meaning.Meaning) + "\n"));
    EXPECT_EQ(Run("--version"), 0);
    EXPECT_EQ(Output(), "tamber-cli " TAMBER_VERSION "\n");
    EXPECT_EQ(Run("read --help >/dev/full"), 3);
}

}  // namespace
}  // namespace Tamber::Cli
