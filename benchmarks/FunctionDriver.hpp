#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "Measure.hpp"
#include "NotedPlatform.hpp"
#include "modFunc.hpp"
#include "platform/qt/QtPlatform.hpp"
#include "ui/mdiMain.hpp"

class QDialog;

namespace Tamber::Bench {

/// How a run of a device function went.
struct FunctionTimes {
    Spent Exchange;  ///< from the first request to the last reply of the region
    Spent Whole;     ///< from the press of Run to the end of the run, its pauses included
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

    /// Asks the board of `folder`, which must not answer, for a block: one wait for a reply, up to
    /// its time-out, while nothing changes on the screen.
    Spent TimeOut(const std::filesystem::path& folder);

    MemoryImage& Image() { return program_.image; }

  private:
    void InDialog(const std::function<void(QDialog&)>& use);
    static void Choose(QDialog& dialog, std::int16_t function);

    modFunc program_;
    QtPlatform qt_;
    Notes notes_;
    NotedPlatform platform_;
    std::unique_ptr<mdiMain> window_;
};

}  // namespace Tamber::Bench
