#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "simulator/BoardBench.hpp"
#include "simulator/BoardOptions.hpp"
#include "simulator/ReplayBoard.hpp"

namespace Tamber::Simulator {
namespace {

// One board of a transcript: the options it has, and its trace.
struct Section {
    std::vector<std::string> Options;
    std::string Trace;
};

std::vector<Section> Sections() {
    std::vector<Section> sections;
    std::stringstream file;
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/board"))
        file << std::ifstream(entry.path()).rdbuf();
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("# tamber-board ")) {
            std::istringstream words(line.substr(15));
            auto& options = sections.emplace_back().Options;
            for (std::string word; words >> word;)
                options.push_back(word);
        } else if (!line.empty() && line.front() != '#') {
            sections.back().Trace += line + '\n';
        }
    }
    return sections;
}

// What a host gets that sends the frames of the exchanges at their times, byte by byte; a line for
// each reply.
std::string Received(BoardLine& board, HandClock& clock,
                     const std::vector<TracedExchange>& exchanges) {
    std::string lines;
    for (const auto& exchange : exchanges) {
        clock.now = exchange.Time;
        for (const std::uint8_t& byte : exchange.Frame)
            board.Receive({&byte, 1});
        while (const auto due = board.NextDue()) {
            EXPECT_FALSE(board.HungUp());
            clock.now = std::max(clock.now, *due);
            const Bytes reply = Ask(board, {});
            lines += TraceLine(clock.now, '<', reply, "\n");
        }
        EXPECT_EQ(board.HungUp(), exchange.HungUp);
    }
    return lines;
}

TEST(Transcripts, BoardsAnswerAndTraceAsWrittenAndReplaysAnswerTheSame) {
    const auto sections = Sections();
    ASSERT_FALSE(sections.empty());
    for (const auto& [words, trace] : sections) {
        SCOPED_TRACE(testing::PrintToString(words));
        const auto options = ParseBoardOptions(words);
        ASSERT_TRUE(options) << options.error().Text;
        const auto exchanges = ReadTrace(trace);
        ASSERT_TRUE(exchanges) << exchanges.error().Line << exchanges.error().Cause;
        std::string expected;
        for (const auto& exchange : *exchanges)
            for (const auto& [delay, bytes] : exchange.Answers)
                expected += TraceLine(exchange.Time + delay, '<', bytes, "\n");

        HandClock clock;
        std::string traced;
        const auto tracer = [&](std::string_view line) { traced.append(line).append("\n"); };
        BoardEngine engine(clock.Reading(), options->Device, options->Identity, tracer);
        FaultyBoard board(engine, clock.Reading(), options->Faults, tracer);
        EXPECT_EQ(Received(board, clock, *exchanges), expected);
        EXPECT_EQ(traced, trace);

        clock.now = {};
        ReplayBoard replay(clock.Reading(), *exchanges);
        EXPECT_EQ(Received(replay, clock, *exchanges), expected);
    }
}

TEST(ReadTrace, ReportsTheLineThatIsWrong) {
    for (const std::string line :
         {"nonsense", "1.000000 > 01 54", "1.0 > 01 ; time", "1.000000 ? 01 ; mark",
          "1.000000 > 012 ; byte", "1.000000 > 0G ; byte", "-1.000000 > 01 ; time",
          "1.000000 >> 01 ; mark", "1.0000000 > 01 ; time", "9999999999.000000 > 01 ; time"}) {
        const auto exchanges = ReadTrace("0.000000 > 01 54 ; identify\n" + line + "\n");
        ASSERT_FALSE(exchanges) << line;
        EXPECT_EQ(exchanges.error().Line, 2) << line;
    }
}

}  // namespace
}  // namespace Tamber::Simulator
