#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/CliBench.hpp"
#include "cli/Ports.hpp"
#include "endtoend/Desktop.hpp"

namespace Tamber::Cli {
namespace {

// The built program and the built board, over a real pseudo-terminal.
class ProgramTest : public testing::Test {
  protected:
    ProgramTest() {
        std::filesystem::copy(SAMPLE_DATA, folder.Path(), std::filesystem::copy_options::recursive);
    }

    void StartBoard(std::vector<std::string> options) {
        options.insert(options.begin(), {BOARD_PROGRAM, "--link", folder / "com1"});
        std::filesystem::remove(folder / "board.log");
        board = std::make_unique<Process>(options, folder.Path(), folder / "board.log");
        ASSERT_TRUE(AwaitText("board.log", "ready"));
    }

    // What the program prints on both streams goes to "out.txt".
    Process Start(const std::string& arguments) {
        std::filesystem::remove(folder / "out.txt");
        return Process({"/bin/sh", "-c", "exec " CLI_PROGRAM " " + arguments}, folder.Path(),
                       folder / "out.txt");
    }

    int Run(const std::string& arguments) { return Start(arguments).Wait(); }
    std::string Output() const { return Contents(folder / "out.txt"); }

    bool AwaitText(const std::string& file, const std::string& text) const {
        return Await([&] { return Contents(folder / file).find(text) != std::string::npos; });
    }

    TestFolder folder;
    std::unique_ptr<Process> board;
};

TEST_F(ProgramTest, TheWholeJobOverAPseudoTerminal) {
    StartBoard({"--name", "BENCH"});
    EXPECT_EQ(Run("auto samples/greeting-16f84a.hex"), 0) << Output();
    EXPECT_THAT(Output(), AllOf(testing::EndsWith("Verifying Conig Word...   OK!\n"),
                                Not(HasSubstr("\x1B"))));
    EXPECT_EQ(Run("verify samples/greeting-16f84a.hex --json"), 0);
    EXPECT_EQ(JsonFact(Output(), "/board/name"), "BENCH");
    EXPECT_EQ(Run("read - 2>/dev/null | " CLI_PROGRAM " verify - --only eeprom"), 0);
    EXPECT_EQ(Run("ports"), 0);
    EXPECT_THAT(Output(), HasSubstr("/com1 -> /dev/pts/"));
    EXPECT_EQ(Run("erase --only eeprom"), 0);
    EXPECT_EQ(Run("verify samples/greeting-16f84a.hex"), 8);
    EXPECT_EQ(Run("blank --port ./samples/greeting-16f84a.hex"), 4);
    EXPECT_THAT(Output(), HasSubstr("Communication Port Error: "));
    EXPECT_EQ(Run("read --help >/dev/full"), 3);
    EXPECT_EQ(Run("read --json >/dev/full"), 3);
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
    StartBoard({"--trace", "--delay", "20"});
    Process once = Start("program samples/greeting-16f84a.hex");
    ASSERT_TRUE(AwaitText("board.log", "> 14 00 40"));
    once.Signal(SIGINT);
    EXPECT_EQ(once.Wait(), 130);
    EXPECT_THAT(Output(), HasSubstr("Programming Program Memory...   Interrupted!\n"));
    ASSERT_TRUE(AwaitText("board.log", "> 01 57 ; write sequence closes"));
    ASSERT_TRUE(AwaitText("board.log", "> 01 49 ; end"));
    EXPECT_THAT(FileText(folder / "board.log"), Not(HasSubstr("> 14 02 00")));

    Process twice = Start("program samples/greeting-16f84a.hex --trace twice.txt");
    ASSERT_TRUE(AwaitText("twice.txt", "> 14 00 40"));
    twice.Signal(SIGINT);
    twice.Signal(SIGTERM);
    EXPECT_EQ(twice.Wait(), 130);
    EXPECT_THAT(FileText(folder / "twice.txt"), Not(HasSubstr("> 01 49")));
}

TEST_F(ProgramTest, InterruptedWhileItWaitsForInputItEnds) {
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    Process waiting = Start("inspect pipe");
    int end = -1;  // it can be opened once the program has opened the other one
    EXPECT_TRUE(Await([&] { return (end = open(pipe.c_str(), O_WRONLY | O_NONBLOCK)) >= 0; }));
    waiting.Signal(SIGTERM);
    EXPECT_EQ(waiting.Wait(), 130);
    close(end);
}

TEST_F(ProgramTest, APortThatGoesAwayEndsTheRunWithinTheTimeOut) {
    StartBoard({"--hang-up", "30"});
    EXPECT_EQ(Run("program samples/greeting-16f84a.hex --trace trace.txt"), 6);
    EXPECT_THAT(Output(), HasSubstr("The port went away."));

    // The board's trouble is in the trace and can be had again.
    EXPECT_EQ(board->Wait(), 0);
    StartBoard({"--replay", "trace.txt"});
    EXPECT_EQ(Run("program samples/greeting-16f84a.hex"), 6);
    EXPECT_THAT(Output(), HasSubstr("The port went away."));
}

TEST_F(ProgramTest, ItRunsWithoutAnyPartOfADisplay) {
    Process listing({"/usr/bin/ldd", CLI_PROGRAM}, folder.Path(), folder / "libraries.txt");
    ASSERT_EQ(listing.Wait(), 0);
    EXPECT_THAT(Contents(folder / "libraries.txt"),
                AllOf(HasSubstr("libQt6SerialPort"), Not(HasSubstr("libQt6Gui"))));
}

}  // namespace
}  // namespace Tamber::Cli
