#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <array>
#include <functional>
#include <memory>

#include "modFunc.hpp"
#include "operations/FunctionDisplay.hpp"
#include "operations/FunctionRun.hpp"
#include "operations/RunSummary.hpp"
#include "platform/Platform.hpp"

class QCheckBox;
class QFrame;
class QGroupBox;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace Tamber {

/// The dialog that runs the device functions and shows their progress. It is made afresh each time
/// it is opened. While a function runs it cannot be closed; a Read that completes takes it off the
/// screen, but it exists, and its owner takes no input, until the run has unwound.
class frmFunction : public QDialog, private FunctionDisplay {
  public:
    /// What brings the views of these regions of the image up to date.
    using ReopenViews = std::function<void(const Regions&)>;

    /// What is told of a run after its end, also in one sentence.
    using RunEnded = std::function<void(const RunSummary& summary, const std::string& text)>;

    /// Sends the device type to the board. The arguments outlive the dialog.
    frmFunction(QWidget& owner, modFunc& program, ProgrammerLink& link, Platform& platform,
                ReopenViews reopenViews, RunEnded runEnded);

    /// Returns when the dialog has been closed and no function runs.
    void ShowModally();

    /// A function is running.
    bool Running() const { return running_; }

    /// Ends the running function, if there is one, at its next block.
    void StopRunning() { stopping_ = true; }

    void reject() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void MakeControls();
    void MakeMessageLines();
    void MakeOptions();
    void MakeProgress();
    void MakeButtons();
    void Form_Load(ProgrammerLink& link);
    void EnableRun(bool enable, const char* whyNot = "");
    void cmdRun_Click();
    void cmdClose_Click();
    void Unload();

    // FunctionDisplay
    void RunBegins() override;
    void RunEnds() override;
    void FunctionBegins(FunctionCode function) override { summary_.FunctionBegins(function); }
    void LinesCleared() override;
    void LineBegins(int line, const std::string& text) override;
    void LineEnds(int line, const std::string& text, const RegionResult& result) override;
    void ProgressMoves(std::int16_t percent) override;
    void ReadCompletes() override;
    void ImageChanged(const Regions& regions) override;
    bool StopRequested() override { return stopping_; }

    QWidget& owner_;
    const modFunc& program_;
    const DeviceRecord& device_;
    std::unique_ptr<WindowTimer> tmrWait;
    FunctionRun run_;
    const ReopenViews reopenViews_;
    const RunEnded runEnded_;
    RunSummary summary_{FunctionRead};
    QElapsedTimer sinceRun_;

    QListWidget* listFunction = nullptr;
    QGroupBox* Frame1 = nullptr;
    std::array<QLabel*, FunctionRun::MessageLines> lblMsg{};
    QGroupBox* frameOption = nullptr;
    QCheckBox* chkPM = nullptr;
    QCheckBox* chkEM = nullptr;
    QCheckBox* chkID = nullptr;
    QCheckBox* chkCW = nullptr;
    QProgressBar* shpBG = nullptr;
    QFrame* shpProgress = nullptr;
    QLabel* lblProgress = nullptr;
    QPushButton* cmdRun = nullptr;
    QPushButton* cmdClose = nullptr;

    QWidget* focusBefore_ = nullptr;  // what had the focus when the run began
    int shownPercent_ = -1;
    bool running_ = false;
    bool stopping_ = false;
    bool unloaded_ = false;  // a Read has taken the dialog off the screen
};

}  // namespace Tamber
