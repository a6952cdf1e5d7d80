#include "cli/CliBench.hpp"

namespace Tamber::Cli {
namespace {

using namespace std::chrono_literals;

const std::vector<std::string> Closed{"01 57", "01 49"};

std::vector<std::string> Tail(const std::vector<std::string>& wire, std::size_t count) {
    return {wire.end() - static_cast<std::ptrdiff_t>(std::min(count, wire.size())), wire.end()};
}

TEST_F(CliTest, InterruptedInAWriteSequenceItClosesItBehindTheBlock) {
    machine.interruptAfter = 8;  // identify, type, W, five blocks
    const Ran ran = Run({"program", Sample("greeting-16f84a")});
    EXPECT_EQ(ran.Status, 130);
    EXPECT_EQ(ran.Out, "Programming Program Memory...   Interrupted!\n");
    const auto wire = Wire();
    ASSERT_EQ(wire.size(), 10u);
    EXPECT_TRUE(wire[7].starts_with("14 00 40 00 08 ")) << wire[7];
    EXPECT_EQ(Tail(wire, 2), Closed);
    EXPECT_FALSE(engine->WriteSequenceOpen());
}

// Neither the second behind a region nor that of an identification is waited for to its end.
TEST_F(CliTest, InterruptedInAWaitItEndsThere) {
    machine.InterruptIn(200ms);
    const Ran ran = Run({"program", Sample("greeting-16f84a")});
    EXPECT_EQ(ran.Status, 130);
    EXPECT_EQ(ran.Out, "Programming Program Memory...   OK!\n");
    EXPECT_EQ(Tail(Wire(), 2), Closed);
    EXPECT_EQ(desktop.now, 200ms);
}

TEST_F(CliTest, InterruptedInAnIdentificationItEndsThere) {
    desktop.board = nullptr;
    machine.InterruptIn(200ms);
    EXPECT_EQ(Run({"identify"}).Status, 130);
    EXPECT_EQ(desktop.now, 200ms);
}

class Interrupted : public CliTest, public testing::WithParamInterface<std::string> {
  protected:
    // Runs the command on a fresh device, or for verify on a programmed one, and interrupts it
    // behind that many frames; below 0 it runs to its end.
    Ran RunUpTo(int frames) {
        machine.interruptAfter = -1;
        Socket({7, 1024, 64});
        const std::string sample = Sample("greeting-16f84a");
        if (GetParam() == "verify")
            Run({"program", sample});
        machine.interruptAfter = frames;
        if (GetParam() == "erase" || GetParam() == "blank")
            return Run({GetParam()});
        return Run({GetParam(), GetParam() == "read" ? (folder / "out.hex").string() : sample});
    }
};

// Wherever it comes, the run ends soon, nothing is left open and no later region begins.
TEST_P(Interrupted, NothingIsLeftOpen) {
    EXPECT_EQ(RunUpTo(-1).Status, 0);
    const auto whole = Wire();
    const bool reads = GetParam() != "erase" && GetParam() != "program" && GetParam() != "auto";
    for (std::size_t frames = 1; frames < whole.size(); frames += 1 + whole.size() / 40) {
        const Ran ran = RunUpTo(static_cast<int>(frames));
        const auto wire = Wire();
        EXPECT_FALSE(engine->WriteSequenceOpen()) << frames;
        EXPECT_LE(wire.size(), frames + 4) << frames;
        if (wire == whole) {
            EXPECT_EQ(ran.Status, 0) << "the last block was under way already, " << frames;
        } else {
            EXPECT_EQ(ran.Status, 130) << frames;
        }
        if (reads && frames > 2) {
            EXPECT_EQ(wire.back(), "01 49") << frames;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EachCommand, Interrupted,
                         testing::Values("program", "verify", "blank", "read", "erase", "auto"));

TEST_F(CliTest, AnInterruptedReadWritesNoFile) {
    machine.interruptAfter = 20;
    EXPECT_EQ(Run({"read", folder / "out.hex"}).Status, 130);
    EXPECT_FALSE(std::filesystem::exists(folder / "out.hex"));
}

TEST_F(CliTest, AStreamThatIsInterruptedIsClosedToo) {
    Socket({1, 512, 0});
    for (const std::string command : {"verify", "read"}) {
        machine.interruptAfter = 12;
        const Ran ran = Run(
            {command, command == "read" ? (folder / "out.hex").string() : Sample("beacon-12c508a"),
             "--device", "PIC12C508A"});
        EXPECT_EQ(ran.Status, 130);
        EXPECT_EQ(Wire().back(), "01 49");
        EXPECT_THAT(ran.Out, testing::EndsWith("   Interrupted!\n"));
    }
}

}  // namespace
}  // namespace Tamber::Cli
