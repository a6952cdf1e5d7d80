#include "simulator/ReplayBoard.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <utility>

#include "core/HexText.hpp"

namespace Tamber::Simulator {
namespace {

using Microseconds = std::chrono::microseconds;

struct Line {
    Microseconds Time{};
    char Mark = '>';
    std::vector<std::uint8_t> Bytes;
    std::string Gloss;
};

// The line; the failure is what is wrong with it.
[[nodiscard]] tl::expected<Line, std::string> ParseLine(const std::string& text) {
    const auto divide = text.find(';');
    if (divide == std::string::npos)
        return tl::unexpected(std::string("no ; before a gloss"));
    char seconds[10], decimals[7], mark[2];
    int end = 0;
    const auto found =
        std::sscanf(text.c_str(), "%9[0-9].%6[0-9] %1[><!] %n", seconds, decimals, mark, &end);
    if (found != 3 || std::strlen(decimals) != 6)
        return tl::unexpected(std::string("not of the form 12.345678 MARK BYTES ; GLOSS"));
    Line line{std::chrono::seconds(std::stol(seconds)) + Microseconds(std::stol(decimals)),
              mark[0],
              {},
              text.substr(divide + 1)};
    std::istringstream words(
        text.substr(static_cast<std::size_t>(end), divide - static_cast<std::size_t>(end)));
    for (std::string word; words >> word;) {
        if (word.size() != 2 || HexDigitValue(word[0]) < 0 || HexDigitValue(word[1]) < 0)
            return tl::unexpected(std::string("something other than bytes in hexadecimal"));
        line.Bytes.push_back(
            static_cast<std::uint8_t>(HexDigitValue(word[0]) * 16 + HexDigitValue(word[1])));
    }
    return line;
}

void AddTo(std::vector<TracedExchange>& exchanges, Line line) {
    if (line.Mark == '>') {
        exchanges.push_back({line.Time, std::move(line.Bytes), {}, false});
        return;
    }
    if (exchanges.empty())
        exchanges.emplace_back();
    auto& [begun, frame, answers, hungUp] = exchanges.back();
    if (line.Mark == '!') {
        hungUp = line.Gloss.find("hung up") != std::string::npos;
        // Without bytes, a hang-up takes nothing back of what has come.
        if (!answers.empty() && !(hungUp && line.Bytes.empty()))
            answers.pop_back();
    }
    if (!line.Bytes.empty())
        answers.push_back({line.Time - begun, std::move(line.Bytes)});
}

}  // namespace

tl::expected<std::vector<TracedExchange>, LineFailure> ReadTrace(const std::string& text) {
    std::vector<TracedExchange> exchanges;
    std::istringstream lines(text);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (line.ends_with('\r'))
            line.pop_back();
        if (line.empty() || line.front() == '#')
            continue;
        auto parsed = ParseLine(line);
        if (!parsed)
            return tl::unexpected(LineFailure{number, parsed.error()});
        AddTo(exchanges, std::move(*parsed));
        if (exchanges.back().HungUp)
            break;
    }
    return exchanges;
}

ReplayBoard::ReplayBoard(BoardClock clock, std::vector<TracedExchange> exchanges, BoardTrace trace)
    : FramedBoard(std::move(clock), std::move(trace)), exchanges_(std::move(exchanges)) {
    if (!exchanges_.empty() && exchanges_.front().Frame.empty())
        AnswerAs(exchanges_[next_++]);
}

void ReplayBoard::Obey(const Frame& frame) {
    const auto rest = std::span(exchanges_).subspan(next_);
    const auto found = std::ranges::find(rest, frame.Bytes, &TracedExchange::Frame);
    if (found == rest.end()) {
        Trace('>', frame.Bytes, "not in the rest of the trace");
        return;
    }
    const auto skipped = static_cast<std::size_t>(found - rest.begin());
    Trace('>', frame.Bytes,
          skipped == 0 ? "as traced" : "as traced, " + std::to_string(skipped) + " frames on");
    next_ += skipped + 1;
    AnswerAs(*found);
}

void ReplayBoard::AnswerAs(const TracedExchange& exchange) {
    for (const auto& [delay, bytes] : exchange.Answers) {
        Trace('<', bytes, "as traced");
        Answer(bytes, delay);
    }
    if (exchange.HungUp) {
        Leave();
        Trace('!', {}, "hung up, as traced");
    }
}

}  // namespace Tamber::Simulator
