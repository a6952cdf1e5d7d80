#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "cli/CliBench.hpp"
#include "simulator/BoardOptions.hpp"

namespace Tamber::Cli {
namespace {

using Lines = std::vector<std::string>;

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
        for (const std::string& line : Split(FileText(file), "\n"))
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
        } else if (mark == '%') {
            for (const std::string& setting : Parts(rest))
                Set(WordsOf(Plain(setting)));
        } else if (mark == '$') {
            const auto end = rest.find(" [");
            step_ = Step{place,
                         Plain(rest.substr(0, end)),
                         end < rest.size() ? rest.substr(end + 1) : "[0]",
                         {}};
        } else if (marked && mark != '#') {
            for (const std::string& part : Parts(rest))
                step_->Marked[mark].push_back(Plain(part));
        } else if (!line.empty() && !marked) {
            step_->Marked[' '].push_back(Plain(line));
        }
    }

    // "\x1B" stands for the character and DIR for the folder.
    std::string Plain(std::string text) const {
        for (auto at = text.find("\\x"); at != std::string::npos; at = text.find("\\x", at + 1))
            text.replace(at, 4, 1,
                         static_cast<char>(std::stoi(text.substr(at + 2, 2), nullptr, 16)));
        for (auto at = text.find("DIR"); at != std::string::npos; at = text.find("DIR", at + 1))
            text.replace(at, 3, bench_->folder.Path());
        return text;
    }

    // A marked line has several, with " / " between them.
    static Lines Parts(const std::string& text) {
        return text.empty() ? Lines{text} : Split(text, " / ");
    }

    static Lines WordsOf(const std::string& line) {
        std::istringstream stream(line);
        return {std::istream_iterator<std::string>(stream), {}};
    }

    void Set(const Lines& words) {
        CliBench& bench = *bench_;
        const auto number = [&](std::size_t index) {
            return static_cast<unsigned>(std::stoul(words.at(index), nullptr, 0));
        };
        const auto options = [&] {
            return Simulator::ParseBoardOptions({words.begin() + 1, words.end()}).value();
        };
        const std::map<std::string, std::function<void()>> settings{
            {"device", [&] { bench.Insert(options().Device); }},
            {"faults", [&] { bench.Spoil(options().Faults); }},
            {"name", [&] { bench.Insert({}, Simulator::Identification(words.at(1))); }},
            {"byte", [&] { bench.engine->Memory().SetByte(number(1), number(2) & 0xFF); }},
            {"replay", [&] { bench.Replay(FileText(words.at(1))); }},
            {"interrupted", [&] { bench.InterruptAfter(number(1)); }},
            {"interrupted-in", [&] { bench.InterruptIn(std::chrono::milliseconds(number(1))); }},
            {"denied", [&] { bench.desktop.portFailure = "Access denied"; }},
            {"lost", [&] { bench.LosePortAfter(number(1)); }},
            {"adapter", [&] { bench.machine.ports.emplace_back(words.at(1), "USB", words.at(2)); }},
            {"link", [&] { std::filesystem::create_symlink(words.at(2), words.at(1)); }},
            {"terminal", [&] { bench.terminal = true; }},
        };
        settings.at(words.at(0))();
    }

    // Runs the companion here and keeps its output in a file; runs all else in a shell.
    Ran Do(const std::string& command, const std::string& input) {
        if (!command.starts_with("tamber-cli")) {
            bench_->folder.Write("input", input);
            const int status = std::system(("{ " + command + "; } <input >shown").c_str());
            return {WEXITSTATUS(status), FileText("shown"), {}};
        }
        Lines words = WordsOf(command);
        words.erase(words.begin());
        const Ran ran = bench_->Run(words, input);
        if (words == Lines{"inspect", "-"})
            ExpectProgramAgrees(ran.Status, input);
        bench_->folder.Write("output", ran.Out);
        return ran;
    }

    // What is found unfit for loading is not loaded; what is loaded may be for another device.
    void ExpectProgramAgrees(int inspected, const std::string& input) {
        const int strict = bench_->Run({"inspect", "-", "--strict"}, input).Status;
        const int programmed = bench_->Run({"program", "-", "-q"}, input).Status;
        EXPECT_TRUE(inspected == 0 || programmed == inspected) << programmed;
        EXPECT_TRUE(strict == 3 || programmed == strict) << programmed << " " << strict;
    }

    void Finish() {
        if (!step_)
            return;
        Step step = *std::exchange(step_, std::nullopt);
        SCOPED_TRACE(step.Place);
        std::string input;
        for (const std::string& line : step.Marked['<'])
            input += line + "\n";
        const auto start = bench_->desktop.now;
        const Ran ran = Do(step.Command, input);
        const auto time = (bench_->desktop.now - start) / std::chrono::milliseconds(1);
        const std::string status = "[" + std::to_string(ran.Status);
        EXPECT_EQ(step.Ending, step.Ending.ends_with(" ms]")
                                   ? status + " after " + std::to_string(time) + " ms]"
                                   : status + "]");
        if (ran.Status == 0 || step.Marked.contains('!'))
            Expect(step.Marked['!'], Split(ran.Errors, "\n"));
        const Lines wire = bench_->Wire();
        EXPECT_TRUE(ran.Status != 2 || wire.empty()) << "A wrong command line reached the board.";
        if (step.Marked.contains('>'))
            Expect(step.Marked['>'], wire.empty() ? Lines{"nothing"} : wire);
        for (const std::string& fact : step.Marked['@']) {
            const std::string pointer = fact.substr(0, fact.find(' '));
            EXPECT_EQ(pointer + " " + JsonFact(ran.Out, pointer), fact);
        }
        if (step.Marked['@'].empty() && (ran.Status <= 2 || step.Marked.contains(' ')))
            Expect(step.Marked[' '], Split(ran.Out, "\n"));
    }

    static void Expect(const Lines& expected, const Lines& actual) {
        EXPECT_TRUE(Matches(expected, actual)) << testing::PrintToString(actual);
    }

    std::optional<CliBench> bench_;
    std::optional<Step> step_;
};

TEST_P(Transcript, RunsAsItIsWritten) {
    Play(std::string(TEST_DATA "/cli/") + GetParam() + ".txt");
}

INSTANTIATE_TEST_SUITE_P(Cli, Transcript,
                         testing::Values("commands", "usage", "failures", "ports", "verify",
                                         "inspect", "replay", "interruptions", "fit",
                                         "calibration"),
                         [](const auto& name) { return std::string(name.param); });

}  // namespace
}  // namespace Tamber::Cli
