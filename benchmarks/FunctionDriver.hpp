#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "Measure.hpp"
#include "modFunc.hpp"
#include "platform/qt/QtPlatform.hpp"
#include "ui/mdiMain.hpp"

class QDialog;

namespace Tamber::Bench {

/// What passed through the serial port, and when.
struct Notes {
    int Last = 0;     ///< the reply, counted from 1, whose taking ends the time
    int Outputs = 0;  ///< the first begins the time
    int Inputs = 0;
    Time Begin{};
    Time End{};
};

/// The times of a run of a device function, in seconds.
struct FunctionTimes {
    double Wall = 0;  ///< from the first request to the last reply of the region
    double Processor = 0;
    double Whole = 0;  ///< from the press of Run to the end of the run, its pauses included
};

/// The program itself, on the screen, used as a user does: the function dialog is opened from the
/// menu, a function chosen, Run pressed and the dialog closed. Needs a QApplication.
class FunctionDriver {
  public:
    /// Starts the program in `folder` and waits until the board has been found.
    explicit FunctionDriver(const std::filesystem::path& folder);

    /// Runs a function on program memory alone, `replies` blocks of it. Ends the benchmark when the
    /// run does not go well.
    FunctionTimes Run(std::int16_t function, int replies);

    MemoryImage& Image() { return program_.image; }

  private:
    void InDialog(const std::function<void(QDialog&)>& use);

    modFunc program_;
    QtPlatform qt_;
    Notes notes_;
    std::unique_ptr<Platform> platform_;  // takes the notes
    std::unique_ptr<mdiMain> window_;
};

/// Asks the board at `port`, which must not answer, for a block: one wait for a reply, up to its
/// time-out, while nothing changes on the screen.
Time TimeOut(const std::filesystem::path& port);

}  // namespace Tamber::Bench
