#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "core/AutoSequence.hpp"

namespace Tamber {

class FunctionRun;

/// One device function, or the Auto series, for everything that lists or runs functions.
struct DeviceFunction {
    FunctionCode Code;
    std::string_view Name;     ///< in the dialogs' lists
    std::string_view Command;  ///< on the command line
    bool Offered;              ///< the series' editor offers it
    bool NeedsImage;           ///< it works with what is in the image
    /// Runs it from start to end within one call, on the ticked regions. The outcome goes to the
    /// display and to ErrorFlag.
    void (*Run)(FunctionRun& run);
};

/// All of them, in the order in which they are listed.
std::span<const DeviceFunction> DeviceFunctions();

/// The function of a code; null for a code that has none.
const DeviceFunction* FindFunction(std::int16_t code);

/// The function that can be an entry of a series; null for any other code.
const DeviceFunction* FindSeriesFunction(std::int16_t code);

/// The functions themselves. A reply that does not come within its second is reported with
/// ReportDeviceFault and ends the function at once: nothing more is sent, not even what would close
/// the sequence, and ErrorFlag stays as it was.

/// Copies the device into the image, then takes the display off the screen and has the views of
/// what was read reopened. Uses one message line for all regions and never sets ErrorFlag.
void ReadDevice(FunctionRun& run);

/// Erases the ticked regions, waiting one period of the pause timer after each command, since the
/// board confirms none. Shows a box, and nothing else, when the board cannot erase the device.
void EraseDevice(FunctionRun& run);

/// Checks that every word of the ticked regions holds its erased value.
void BlankCheckDevice(FunctionRun& run);

/// Writes the image into the device. A block that the board refuses ends its region, not the
/// function.
void ProgramDevice(FunctionRun& run);

/// Compares the device with the image; the first difference of each region is shown.
void VerifyDevice(FunctionRun& run);

/// Runs the entries of the Auto series until one of them has set ErrorFlag. A time-out does not
/// stop the series.
void RunAuto(FunctionRun& run);

}  // namespace Tamber
