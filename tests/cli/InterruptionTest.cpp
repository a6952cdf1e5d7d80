#include "cli/CliBench.hpp"

namespace Tamber::Cli {
namespace {

// Wherever it comes, the run ends soon, nothing is left open and no later region begins.
TEST(Interruption, AtAnyFrameNothingIsLeftOpen) {
    CliBench bench;
    const std::string sample = "samples/greeting-16f84a.hex";
    const std::vector<std::string> commands[] = {{"program", sample}, {"verify", sample},
                                                 {"auto", sample},    {"read", "out.hex"},
                                                 {"blank"},           {"erase"}};
    for (const auto& command : commands) {
        SCOPED_TRACE(command[0]);
        const bool reads = command[0] == "verify" || command[0] == "blank" || command[0] == "read";
        const auto run = [&](std::size_t frames) {
            bench.machine.interrupted = {};
            bench.Insert({7, 1024, 64});
            if (command[0] == "verify")
                bench.Run({"program", sample});
            bench.InterruptAfter(frames);
            return bench.Run(command).Status;
        };
        EXPECT_EQ(run(10'000), 0);
        const auto whole = bench.Wire();
        for (std::size_t frames = 1; frames + 1 < whole.size(); frames += 1 + whole.size() / 40) {
            SCOPED_TRACE(frames);
            const int status = run(frames);
            const auto wire = bench.Wire();
            EXPECT_FALSE(bench.engine->WriteSequenceOpen());
            EXPECT_LE(wire.size(), frames + 5);
            EXPECT_EQ(status, wire == whole ? 0 : 130);  // 0: the last block was under way
            EXPECT_TRUE(!reads || frames <= 2 || wire.back() == "01 49") << wire.back();
        }
    }
}

}  // namespace
}  // namespace Tamber::Cli
