#pragma once

#include <string>
#include <utility>
#include <vector>

#include "cli/Terminal.hpp"
#include "operations/FunctionDisplay.hpp"
#include "platform/MessageBoxes.hpp"

namespace Tamber::Cli {

/// What one device function had to say.
struct FunctionReport {
    std::string Function;
    std::vector<std::string> Lines;  ///< as they ended
};

/// Shows a run in the terminal, a line for each region and a bar while it lasts, and keeps what was
/// shown.
class TerminalDisplay final : public FunctionDisplay {
  public:
    explicit TerminalDisplay(Terminal& terminal) : terminal_(terminal) {}

    /// What follows belongs to this function.
    void BeginFunction(std::string_view name) { reports_.push_back({std::string(name), {}}); }

    const std::vector<FunctionReport>& Reports() const { return reports_; }

    void RunBegins() override {}
    void RunEnds() override { terminal_.EraseBar(); }
    void LinesCleared() override {}
    void LineBegins(int line, const std::string& text) override;
    void LineEnds(int line, const std::string& text) override;
    void ProgressMoves(std::int16_t percent) override;
    void ReadCompletes() override {}
    void ImageChanged(const Regions&) override {}

  private:
    Terminal& terminal_;
    std::vector<FunctionReport> reports_;
    std::string heading_;  // empty: no region is under way
};

/// Shows nothing of a run but its bar, behind a heading of its own.
class BarDisplay final : public FunctionDisplay {
  public:
    BarDisplay(Terminal& terminal, std::string heading)
        : terminal_(terminal), heading_(std::move(heading)) {}

    void RunBegins() override {}
    void RunEnds() override { terminal_.EraseBar(); }
    void LinesCleared() override {}
    void LineBegins(int, const std::string&) override {}
    void LineEnds(int, const std::string&) override {}
    void ProgressMoves(std::int16_t percent) override { terminal_.ShowBar(heading_, percent); }
    void ReadCompletes() override {}
    void ImageChanged(const Regions&) override {}

  private:
    Terminal& terminal_;
    std::string heading_;
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
