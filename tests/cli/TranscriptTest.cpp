#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <sstream>

#include "cli/CliBench.hpp"

namespace Tamber::Cli {
namespace {

using Lines = std::vector<std::string>;
using Shape = Simulator::DeviceShape;

Lines LinesOf(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// "\x1B" stands for the character.
std::string Unescaped(std::string text) {
    for (auto at = text.find("\\x"); at != std::string::npos; at = text.find("\\x", at + 1))
        text.replace(at, 4, 1, static_cast<char>(std::stoi(text.substr(at + 2, 2), nullptr, 16)));
    return text;
}

// The same the other way round; the folder's own name becomes DIR.
std::string Shown(std::string text, const std::string& folder) {
    for (auto at = text.find(folder); at != std::string::npos; at = text.find(folder))
        text.replace(at, folder.size(), "DIR");
    std::string shown;
    for (const char letter : text)
        if (letter >= 0 && letter < ' ' && letter != '\n')
            shown += "\\x" + HexBytes(std::vector{static_cast<std::uint8_t>(letter)});
        else
            shown += letter;
    return shown;
}

// In `expected`, a line "..." stands for any number of lines.
bool Matches(std::span<const std::string> expected, std::span<const std::string> actual) {
    if (expected.empty())
        return actual.empty();
    if (expected.front() == "...")
        return Matches(expected.subspan(1), actual) ||
               (!actual.empty() && Matches(expected, actual.subspan(1)));
    return !actual.empty() && expected.front() == actual.front() &&
           Matches(expected.subspan(1), actual.subspan(1));
}

// A command with what it is given and what is expected of it.
struct Step {
    std::string Place;
    std::string Command;
    std::string Ending;
    std::map<char, Lines> Marked;  // the lines by their mark; ' ' is standard output
};

class Transcript : public testing::TestWithParam<const char*> {
  protected:
    void Play(const std::string& file) {
        int number = 0;
        for (const std::string& line : LinesOf(FileText(file)))
            Read(line, file + ":" + std::to_string(++number) + ": " + line);
        Finish();
    }

  private:
    void Read(const std::string& line, const std::string& place) {
        const bool marked = line.find_first_of("=%$<!>@#") == 0 && line.substr(1, 1) <= " ";
        const char mark = marked ? line[0] : ' ';
        const std::string rest = marked ? line.substr(std::min(line.size(), 2ul)) : line;
        if (mark == '=' || mark == '%' || mark == '$')
            Finish();
        if (mark == '=') {
            bench_.reset();  // the new one's folder has the same name
            bench_.emplace();
            faults_ = {};
        } else if (mark == '%') {
            for (const std::string& setting : Parts(rest))
                Set(WordsOf(setting));
        } else if (mark == '$') {
            const auto end = rest.find(" [");
            step_ = Step{
                place, rest.substr(0, end), end < rest.size() ? rest.substr(end + 1) : "[0]", {}};
        } else if (marked && mark != '#') {
            for (const std::string& part : Parts(rest))
                step_->Marked[mark].push_back(part);
        } else if (!line.empty() && !marked) {
            step_->Marked[' '].push_back(line);
        }
    }

    // A marked line has several, with " / " between them.
    static Lines Parts(std::string text) {
        for (auto at = text.find(" / "); at != std::string::npos; at = text.find(" / "))
            text.replace(at, 3, "\n");
        return LinesOf(text + "\n");
    }

    static Lines WordsOf(const std::string& line) {
        std::istringstream stream(Unescaped(line));
        return {std::istream_iterator<std::string>(stream), {}};
    }

    void Set(const Lines& words) {
        CliBench& bench = *bench_;
        const auto number = [&](std::size_t index) {
            return static_cast<int>(std::strtol(words.at(index).c_str(), nullptr, 0));
        };
        const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(number(i)); };
        const auto length = [&](std::size_t i) { return static_cast<std::size_t>(number(i)); };
        if (words.at(0) == "replay")
            return bench.Replay(FileText(words.at(1)));
        using std::chrono::milliseconds;
        const std::map<std::string, std::function<void()>> settings{
            {"device", [&] { bench.Insert(Shape(number(1), number(2), number(3))); }},
            {"name", [&] { bench.Insert(Shape(), Simulator::Identification(words.at(1))); }},
            {"byte", [&] { bench.engine->Memory().SetByte(length(1) & 0xFFFF, byte(2)); }},
            {"silent", [&] { faults_.SilentFrom = number(1); }},
            {"short", [&] { faults_.ReplyLength.emplace(number(1), length(2)); }},
            {"altered", [&] { faults_.AlteredByte.emplace(number(1), length(2), byte(3)); }},
            {"refused", [&] { faults_.RefusedWrite.emplace(byte(1), byte(2)); }},
            {"identification", [&] { faults_.IdentificationLength = length(1); }},
            {"late", [&] { faults_.Delay.emplace(std::nullopt, milliseconds(number(1))); }},
            {"denied", [&] { bench.desktop.portFailure = "Access denied"; }},
            {"lost", [&] { bench.LosePortAfter(length(1)); }},
            {"adapter", [&] { bench.machine.ports.emplace_back(words.at(1), "USB", words.at(2)); }},
            {"link", [&] { std::filesystem::create_symlink(words.at(2), words.at(1)); }},
            {"terminal", [&] { bench.terminal = bench.colour = true; }},
        };
        settings.at(words[0])();
        bench.Spoil(faults_);
    }

    // What the transcripts need of a shell.
    Ran Do(Lines words, std::string input) {
        std::string output;
        if (const auto turn = std::ranges::find_first_of(words, Lines{"<", ">"});
            turn != words.end()) {
            (*turn == "<" ? input : output) = *turn == "<" ? FileText(turn[1]) : turn[1];
            words.erase(turn, words.end());
        }
        const std::string program = words.at(0);
        words.erase(words.begin());
        Ran ran;
        if (program == "cat")
            ran.Out = std::accumulate(words.begin(), words.end(), input,
                                      [](const std::string& text, const std::string& file) {
                                          return text + FileText(file);
                                      });
        else if (program == "cmp")
            ran.Status = FileText(words.at(0)) == FileText(words.at(1)) ? 0 : 1;
        else if (program == "test")
            ran.Status = exists(std::filesystem::symlink_status(words.at(1))) ? 0 : 1;
        else if (program == "readlink")
            ran.Out = std::filesystem::read_symlink(words.at(0)).string() + "\n";
        else
            ran = bench_->Run(words, input);
        if (words == Lines{"inspect", "-"}) {  // what is found unfit for loading is not loaded
            EXPECT_EQ(bench_->Run({"program", "-"}, input).Status, ran.Status);
        }
        if (!output.empty())
            bench_->folder.Write(output, std::exchange(ran.Out, {}));
        return ran;
    }

    void Finish() {
        if (!step_)
            return;
        Step step = *std::exchange(step_, std::nullopt);
        SCOPED_TRACE(step.Place);
        std::string input;
        for (const std::string& line : step.Marked['<'])
            input += Unescaped(line) + "\n";
        const auto start = bench_->desktop.now;
        const Ran ran = Do(WordsOf(step.Command), input);
        const auto time = (bench_->desktop.now - start) / std::chrono::milliseconds(1);
        const std::string status = "[" + std::to_string(ran.Status);
        EXPECT_EQ(step.Ending, step.Ending.ends_with(" ms]")
                                   ? status + " after " + std::to_string(time) + " ms]"
                                   : status + "]");
        if (ran.Status == 0 || step.Marked.contains('!'))
            Expect(step.Marked['!'], LinesOf(ran.Errors));
        const Lines wire = bench_->Wire();
        EXPECT_TRUE(ran.Status != 2 || wire.empty()) << "A wrong command line reached the board.";
        if (step.Marked.contains('>'))
            Expect(step.Marked['>'], wire.empty() ? Lines{"nothing"} : wire);
        for (const std::string& fact : step.Marked['@']) {
            const std::string pointer = fact.substr(0, fact.find(' '));
            EXPECT_EQ(pointer + " " + JsonFact(ran.Out, pointer), Unescaped(fact));
        }
        if (step.Marked['@'].empty() && (ran.Status <= 2 || step.Marked.contains(' ')))
            Expect(step.Marked[' '], LinesOf(ran.Out));
    }

    void Expect(const Lines& expected, Lines actual) const {
        for (std::string& line : actual)
            line = Shown(line, bench_->folder.Path());
        EXPECT_TRUE(Matches(expected, actual)) << testing::PrintToString(actual);
    }

    std::optional<CliBench> bench_;
    Simulator::FaultPlan faults_;
    std::optional<Step> step_;
};

TEST_P(Transcript, RunsAsItIsWritten) {
    Play(std::string(TEST_DATA "/cli/") + GetParam() + ".txt");
}

INSTANTIATE_TEST_SUITE_P(Cli, Transcript,
                         testing::Values("commands", "usage", "failures", "ports", "verify",
                                         "inspect", "replay"),
                         [](const auto& name) { return std::string(name.param); });

}  // namespace
}  // namespace Tamber::Cli
