#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber {

void RunAuto(FunctionRun& run) {
    for (const std::int16_t code : run.Series().Codes()) {
        if (run.StopRequested())
            return;
        run.RunDeviceFunction(code);
        if (code == FunctionErase)
            run.WaitOnePeriod();
        if (run.ErrorFlag || run.Stopped)
            return;
        run.ClearLines();
    }
}

}  // namespace Tamber
