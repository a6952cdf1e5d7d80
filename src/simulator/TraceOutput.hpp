#pragma once

#include <string>
#include <string_view>

namespace Tamber::Simulator {

/// Collects the lines of a trace and writes them to standard error when the line has time for it. A
/// reader that is slow or has stopped reading never holds up the board: lines wait here, and beyond
/// four megabytes new ones are lost.
class TraceOutput {
  public:
    TraceOutput() = default;
    TraceOutput(const TraceOutput&) = delete;
    TraceOutput& operator=(const TraceOutput&) = delete;
    /// Writes what is left, as long as the reader takes something at least once a second.
    ~TraceOutput() { Write(1000); }

    /// Adds a line, given without its line end.
    void Add(std::string_view line);

    /// Writes as much as the reader takes at once.
    void Write() { Write(0); }

  private:
    void Write(int patienceMilliseconds);

    std::string lines_;
};

}  // namespace Tamber::Simulator
