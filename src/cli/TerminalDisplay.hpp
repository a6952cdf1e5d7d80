#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "cli/Terminal.hpp"
#include "operations/FunctionDisplay.hpp"
#include "platform/MessageBoxes.hpp"

namespace Tamber::Cli {

/// What one device function had to say.
struct FunctionReport {
    FunctionCode Function = FunctionRead;
    std::vector<std::string> Lines;     ///< as they ended
    std::vector<RegionResult> Results;  ///< what they came to, in the same order
};

/// Shows a run in the terminal, a line for each region and a bar while it lasts, and keeps what was
/// shown.
class TerminalDisplay final : public FunctionDisplay {
  public:
    /// `stop` is asked whether the run is to end.
    TerminalDisplay(Terminal& terminal, std::function<bool()> stop)
        : terminal_(terminal), stop_(std::move(stop)) {}

    const std::vector<FunctionReport>& Reports() const { return reports_; }

    void RunEnds() override { terminal_.EraseBar(); }
    void FunctionBegins(FunctionCode function) override;
    void LineBegins(int line, const std::string& text) override;
    void LineEnds(int line, const std::string& text, const RegionResult& result) override;
    void ProgressMoves(std::int16_t percent) override;
    bool StopRequested() override { return stop_(); }

  private:
    Terminal& terminal_;
    std::function<bool()> stop_;
    std::vector<FunctionReport> reports_;
    std::string heading_;  // empty: no region is under way
};

/// Shows nothing of a run but its bar, behind a heading of its own.
class BarDisplay final : public FunctionDisplay {
  public:
    BarDisplay(Terminal& terminal, std::string heading, std::function<bool()> stop)
        : terminal_(terminal), heading_(std::move(heading)), stop_(std::move(stop)) {}

    void RunEnds() override { terminal_.EraseBar(); }
    void ProgressMoves(std::int16_t percent) override { terminal_.ShowBar(heading_, percent); }
    bool StopRequested() override { return stop_(); }

  private:
    Terminal& terminal_;
    std::string heading_;
    std::function<bool()> stop_;
};

/// Message boxes as lines on standard error. Nobody needs to close them.
class TerminalBoxes final : public MessageBoxes {
  public:
    explicit TerminalBoxes(Terminal& terminal) : terminal_(terminal) {}

    void Show(const std::string& text, const std::string& title, BoxIcon icon) override;

  private:
    Terminal& terminal_;
};

}  // namespace Tamber::Cli
