#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "operations/RegionResult.hpp"

namespace Tamber {

/// Sums up a run in one sentence, from the events of FunctionDisplay.
class RunSummary {
  public:
    /// A run of function `function` begins, which may be the Auto series.
    explicit RunSummary(FunctionCode function) : function_(function) {}

    void FunctionBegins(FunctionCode function);

    /// `text` is the whole message line.
    void LineEnds(std::string_view text, const RegionResult& result);

    /// Nothing has gone wrong.
    bool Good() const { return failure_.empty(); }

    /// Program memory was erased.
    bool Erased() const { return erased_; }

    /// "Auto: erase, blank, program, verify; all good; 9.4 s", or with the first message line that
    /// is not good in the place of "all good".
    std::string Text(std::chrono::milliseconds took) const;

  private:
    FunctionCode function_;
    std::string steps_;
    std::string failure_;
    bool anything_ = false;  // a region has ended
    bool erased_ = false;
};

}  // namespace Tamber
