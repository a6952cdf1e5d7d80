#pragma once

#include <QDialog>
#include <cstdint>
#include <memory>
#include <optional>

#include "modFunc.hpp"
#include "operations/FunctionRun.hpp"
#include "platform/Platform.hpp"

class QProgressBar;

namespace Tamber {

/// The dialog that is there while program memory is read for its last word. The image stays as it
/// is. Cancel or Escape ends the reading at its next block.
class frmReadCalibration : public QDialog, private FunctionDisplay {
  public:
    /// The arguments outlive the dialog.
    frmReadCalibration(QWidget& owner, modFunc& program, ProgrammerLink& link, Platform& platform);

    /// Names the device type to the board, reads program memory and returns its last word; nothing
    /// when the reading was ended or the board stopped answering, which a box has told.
    std::optional<std::uint16_t> Read();

    void StopRunning() { stopping_ = true; }

    /// Ends the reading; the dialog closes after it.
    void reject() override { StopRunning(); }

  private:
    void MakeControls();
    void Run();
    void ProgressMoves(std::int16_t percent) override;
    void ReadCompletes() override { completed_ = true; }
    bool StopRequested() override { return stopping_; }

    const DeviceRecord& device_;
    ProgrammerLink& link_;
    MemoryImage image_;  // the device as it is read
    std::unique_ptr<WindowTimer> tmrWait_;
    FunctionRun run_;
    QProgressBar* shpBG = nullptr;
    bool completed_ = false;
    bool stopping_ = false;
};

}  // namespace Tamber
