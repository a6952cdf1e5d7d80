#include "cli/TerminalDisplay.hpp"

namespace Tamber::Cli {

void TerminalDisplay::LineBegins(int, const std::string& text) {
    heading_ = text;
    terminal_.ShowBar(heading_, 0);
}

void TerminalDisplay::FunctionBegins(FunctionCode function) {
    reports_.push_back({function, {}, {}});
}

void TerminalDisplay::LineEnds(int, const std::string& text, const RegionResult& result) {
    heading_.clear();
    reports_.back().Lines.push_back(text);
    reports_.back().Results.push_back(result);
    terminal_.Result(text, result.Outcome == RegionOutcome::Good ? Tone::Good : Tone::Bad);
}

void TerminalDisplay::ProgressMoves(std::int16_t percent) {
    if (!heading_.empty())
        terminal_.ShowBar(heading_, percent);
}

void TerminalBoxes::Show(const std::string& text, const std::string& title, BoxIcon) {
    terminal_.Complain(title + ": " + text);
}

}  // namespace Tamber::Cli
