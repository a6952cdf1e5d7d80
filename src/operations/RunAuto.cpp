#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber {

void RunAuto(FunctionRun& run) {
    const AutoSequence& series = run.Series();
    for (int autoStep = 1; autoStep <= series.AutoCount; ++autoStep) {
        if (run.StopRequested())
            return;
        const std::int16_t code = series.Entries[static_cast<std::size_t>(autoStep)];
        run.RunDeviceFunction(code);
        if (code == FunctionErase)
            run.WaitOnePeriod();
        if (run.ErrorFlag || run.Stopped)
            return;
        run.ClearLines();
    }
}

}  // namespace Tamber
