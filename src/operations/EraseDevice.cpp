#include "operations/DeviceFunctions.hpp"
#include "operations/FunctionRun.hpp"

namespace Tamber {
namespace {

constexpr int PauseMilliseconds = 100;

// The board confirms no erase, so it is given one period of the pause timer.
void EraseRegion(FunctionRun& run, Region region, void (ProgrammerLink::*erase)()) {
    run.ShowProgress(0);
    run.BeginRegion(region);
    (run.Link().*erase)();
    run.WaitOnePeriod();
    run.ShowProgress(100);
    run.EndRegion(region);
}

}  // namespace

void EraseDevice(FunctionRun& run) {
    if (run.Device().EraseSupported == 0) {
        run.Boxes().Show("Erase Function Not Available!", ProgramTitle, BoxIcon::None);
        return;
    }
    const struct {
        bool wanted;
        Region region;
        void (ProgrammerLink::*erase)();
    } regions[] = {
        {run.Ticked().ProgramMemory, Region::ProgramMemory, &ProgrammerLink::EraseProgramMemory},
        {run.Ticked().Eeprom && run.EepromBytes() != 0, Region::Eeprom,
         &ProgrammerLink::EraseEeprom},
        {run.Ticked().IdLocations, Region::IdLocations, &ProgrammerLink::EraseIdLocations},
        {run.Ticked().ConfigurationWord, Region::ConfigurationWord,
         &ProgrammerLink::EraseConfigurationWord},
    };
    for (const auto& [wanted, region, erase] : regions) {
        if (!wanted || run.StopRequested())
            continue;
        EraseRegion(run, region, erase);
        if (region != Region::ConfigurationWord)
            run.NextLine();
        run.Pause(PauseMilliseconds);
    }
}

}  // namespace Tamber
