#include "operations/RunSummary.hpp"

#include <cstdio>

#include "operations/DeviceFunctions.hpp"

namespace Tamber {

void RunSummary::FunctionBegins(FunctionCode function) {
    if (function_ != FunctionAuto)
        return;
    steps_ += steps_.empty() ? " " : ", ";
    steps_ += FindFunction(function)->Command;
}

void RunSummary::LineEnds(std::string_view text, const RegionResult& result) {
    anything_ = true;
    erased_ =
        erased_ || (result.Function == FunctionErase && result.Where == Region::ProgramMemory);
    if (result.Outcome != RegionOutcome::Good && Good())
        failure_ = text;
}

std::string RunSummary::Text(std::chrono::milliseconds took) const {
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.1f s", static_cast<double>(took.count()) / 1000);
    const std::string outcome = !Good() ? failure_ : anything_ ? "all good" : "nothing done";
    return std::string(FindFunction(function_)->Name) + ":" + steps_ +
           (steps_.empty() ? " " : "; ") + outcome + "; " + seconds;
}

}  // namespace Tamber
