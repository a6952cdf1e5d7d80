#pragma once

namespace Tamber {

class FunctionRun;

/// The device functions. Each runs from start to end within one call, on the ticked regions, and
/// leaves its outcome in the message lines and in ErrorFlag. A reply that does not come within its
/// second is reported with ReportDeviceFault and ends the function at once: nothing more is sent,
/// not even what would close the sequence, and ErrorFlag stays as it was.

/// Copies the device into the image, then takes the display off the screen and has the views of
/// what was read made anew. Uses one message line for all regions and never sets ErrorFlag.
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
