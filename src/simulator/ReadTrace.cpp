#include <charconv>

#include "simulator/HexText.hpp"
#include "simulator/OptionValues.hpp"
#include "simulator/ReplayBoard.hpp"

namespace Tamber::Simulator {

namespace {

using Microseconds = std::chrono::microseconds;

struct Line {
    Microseconds time{};
    char mark = '>';
    std::vector<std::uint8_t> bytes;
    std::string_view gloss;
};

std::optional<long> Number(std::string_view digits) {
    long number = 0;
    const auto* const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, number);
    if (error != std::errc{} || rest != end || number < 0)
        return std::nullopt;
    return number;
}

// "12.345678"
std::optional<Microseconds> TimeFromText(std::string_view text) {
    const auto pieces = Pieces(text, '.');
    if (pieces.size() != 2 || pieces[1].size() != 6)
        return std::nullopt;
    const auto seconds = Number(pieces[0]);
    const auto decimals = Number(pieces[1]);
    if (!seconds || !decimals)
        return std::nullopt;
    return std::chrono::seconds(*seconds) + Microseconds(*decimals);
}

// The line, or what is wrong with it.
std::variant<Line, std::string> ParseLine(std::string_view text) {
    const auto divide = text.find(';');
    if (divide == std::string_view::npos)
        return "no ; before a gloss";
    const auto pieces = Pieces(text.substr(0, divide), ' ');
    if (pieces.size() < 3 || pieces[1].size() != 1 || !pieces.back().empty())
        return "not of the form TIME MARK BYTES ; GLOSS";
    const auto time = TimeFromText(pieces[0]);
    if (!time)
        return "no time of the form 12.345678";
    Line line{*time, pieces[1][0], {}, text.substr(divide + 1)};
    if (line.mark != '>' && line.mark != '<' && line.mark != '!')
        return "a mark other than >, < and !";
    for (std::size_t i = 2; i + 1 < pieces.size(); ++i) {
        const auto byte = ByteFromText(pieces[i]);
        if (!byte)
            return "something other than bytes in hexadecimal";
        line.bytes.push_back(*byte);
    }
    return line;
}

// Puts lines together to exchanges.
class Gathering {
  public:
    void Add(Line line) {
        if (line.mark == '>') {
            exchanges_.push_back({std::move(line.bytes), {}, false});
            begun_ = line.time;
            return;
        }
        if (exchanges_.empty())
            exchanges_.emplace_back();
        auto& exchange = exchanges_.back();
        if (line.mark == '!') {
            exchange.hungUp = line.gloss.find("hung up") != std::string_view::npos;
            // Without bytes, a hang-up takes nothing back of what has come.
            if (!exchange.answers.empty() && !(exchange.hungUp && line.bytes.empty()))
                exchange.answers.pop_back();
        }
        if (!line.bytes.empty())
            exchange.answers.push_back({line.time - begun_, std::move(line.bytes)});
    }

    bool Over() const { return !exchanges_.empty() && exchanges_.back().hungUp; }
    std::vector<TracedExchange> Take() { return std::move(exchanges_); }

  private:
    std::vector<TracedExchange> exchanges_;
    Microseconds begun_{};
};

}  // namespace

std::variant<std::vector<TracedExchange>, TraceFault> ReadTrace(std::string_view text) {
    Gathering gathering;
    int number = 0;
    for (auto line : Pieces(text, '\n')) {
        ++number;
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (line.empty() || line.front() == '#' || gathering.Over())
            continue;
        auto parsed = ParseLine(line);
        if (const auto* const cause = std::get_if<std::string>(&parsed))
            return TraceFault{number, *cause};
        gathering.Add(std::move(std::get<Line>(parsed)));
    }
    return gathering.Take();
}

}  // namespace Tamber::Simulator
