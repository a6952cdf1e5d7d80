#include "cli/TerminalDisplay.hpp"

#include "operations/FunctionRun.hpp"

namespace Tamber::Cli {

void TerminalDisplay::LineBegins(int, const std::string& text) {
    heading_ = text;
    terminal_.ShowBar(heading_, 0);
}

void TerminalDisplay::LineEnds(int, const std::string& text) {
    heading_.clear();
    if (!reports_.empty())
        reports_.back().Lines.push_back(text);
    terminal_.Result(text, text.ends_with(OkText) ? Tone::Good : Tone::Bad);
}

void TerminalDisplay::ProgressMoves(std::int16_t percent) {
    if (!heading_.empty())
        terminal_.ShowBar(heading_, percent);
}

void TerminalBoxes::Show(const std::string& text, const std::string& title, BoxIcon) {
    terminal_.Complain(title + ": " + text);
}

}  // namespace Tamber::Cli
