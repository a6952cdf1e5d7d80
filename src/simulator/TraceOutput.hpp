#pragma once

#include <string>
#include <string_view>

namespace Tamber::Simulator {

/// Collects the lines of a trace and shows them on standard error when the line has time for it. A
/// reader that is slow or has stopped reading never holds up the board: lines wait here, and beyond
/// four megabytes new ones are lost.
class TraceOutput {
  public:
    TraceOutput() = default;
    TraceOutput(const TraceOutput&) = delete;
    TraceOutput& operator=(const TraceOutput&) = delete;
    /// Shows what is left, as long as the reader takes something at least once a second.
    ~TraceOutput();

    /// Adds a line, given without its line end.
    void Add(std::string_view line);

    /// Shows as much as can be written without waiting.
    void Show() { Show(0); }

  private:
    void Show(int patienceMilliseconds);

    std::string lines_;
};

}  // namespace Tamber::Simulator
