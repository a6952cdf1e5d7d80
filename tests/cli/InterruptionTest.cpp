#include "cli/CliBench.hpp"

namespace Tamber::Cli {
namespace {

using namespace std::chrono_literals;

const std::string Sample = "samples/greeting-16f84a.hex";

class Interruptions : public CliTest {
  protected:
    Ran RunUpTo(std::size_t frames, const std::vector<std::string>& words) {
        machine.interrupted = [this, frames] { return Wire().size() > frames; };  // and "open"
        return Run(words);
    }

    Ran RunFor(std::chrono::milliseconds time, const std::vector<std::string>& words) {
        const auto timer = desktop.NewTimer();
        timer->SetInterval(time);
        timer->OnTick([this] { machine.interrupted = [] { return true; }; });
        timer->Enable();
        return Run(words);
    }

    // Closing the write sequence is the last thing that was sent.
    bool ClosedLast() const {
        const auto wire = Wire();
        return std::ranges::equal(std::span(wire).last(2), std::vector{"01 57", "01 49"});
    }
};

// The second after a region is not waited for to its end.
TEST_F(Interruptions, InAWaitItEndsThere) {
    const Ran ran = RunFor(200ms, {"program", Sample});
    EXPECT_EQ(ran.Status, 130);
    EXPECT_EQ(ran.Out, "Programming Program Memory...   OK!\n");
    EXPECT_TRUE(ClosedLast());
    EXPECT_EQ(desktop.now, 200ms);
}

// Wherever it comes, the run ends soon, nothing is left open and no later region begins.
TEST_F(Interruptions, AtAnyFrameNothingIsLeftOpen) {
    const std::vector<std::string> commands[] = {{"program", Sample}, {"verify", Sample},
                                                 {"auto", Sample},    {"read", "out.hex"},
                                                 {"blank"},           {"erase"}};
    for (const auto& command : commands) {
        SCOPED_TRACE(command[0]);
        const bool reads = command[0] == "verify" || command[0] == "blank" || command[0] == "read";
        const auto run = [&](std::size_t frames) {
            machine.interrupted = {};
            Insert({7, 1024, 64});
            if (command[0] == "verify")
                Run({"program", Sample});
            return RunUpTo(frames, command);
        };
        EXPECT_EQ(run(10'000).Status, 0);
        const auto whole = Wire();
        for (std::size_t frames = 1; frames + 1 < whole.size(); frames += 1 + whole.size() / 40) {
            SCOPED_TRACE(frames);
            std::filesystem::remove("out.hex");
            const Ran ran = run(frames);
            EXPECT_FALSE(engine->WriteSequenceOpen());
            EXPECT_LE(Wire().size(), frames + 5);
            EXPECT_EQ(ran.Status, Wire() == whole ? 0 : 130);  // 0: the last block was under way
            EXPECT_FALSE(std::filesystem::exists("out.hex") && ran.Status == 130);
            EXPECT_TRUE(!reads || frames <= 2 || Wire().back() == "01 49") << Wire().back();
        }
    }
}

}  // namespace
}  // namespace Tamber::Cli
