#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber {
namespace {

constexpr int PauseMilliseconds = 100;

// The board confirms no erase, so one period of the pause timer stands for its end.
void EraseRegion(FunctionRun& run, const char* heading, CommandLetter letter) {
    run.ShowProgress(0);
    run.BeginLine(heading);
    run.Link().SendCommand(letter);
    run.WaitOnePeriod();
    run.ShowProgress(100);
    run.EndLineOk();
}

void GoOn(FunctionRun& run) {
    run.NextLine();
    run.Pause(PauseMilliseconds);
}

}  // namespace

void EraseDevice(FunctionRun& run) {
    if (run.Device().EraseSupported == 0) {
        run.Boxes().Show("Erase Function Not Available!", ProgramTitle, BoxIcon::None);
        return;
    }
    const Regions& ticked = run.Ticked();
    if (ticked.ProgramMemory && !run.StopRequested()) {
        EraseRegion(run, "Erasing Program Memory...", CommandEraseProgram);
        GoOn(run);
    }
    if (ticked.Eeprom && run.EepromBytes() != 0 && !run.StopRequested()) {
        EraseRegion(run, "Erasing EEPROM...", CommandEraseEeprom);
        GoOn(run);
    }
    if (ticked.IdLocations && !run.StopRequested()) {
        EraseRegion(run, "Erasing ID Locs...", CommandEraseIdLocations);
        GoOn(run);
    }
    if (ticked.ConfigurationWord && !run.StopRequested()) {
        EraseRegion(run, "Erasing Config Word...", CommandEraseConfiguration);
        run.Pause(PauseMilliseconds);
    }
}

}  // namespace Tamber
