#pragma once

#include <memory>

#include "operations/FunctionRun.hpp"
#include "simulator/BoardEngine.hpp"
#include "simulator/Faults.hpp"
#include "support/FakeDesktop.hpp"

namespace Tamber {

/// Writes what a device function shows into the desktop's record: "line 0 ...", "end 0 ...",
/// "progress 50", "cleared", "closes", "views PM EM ID CW". Expects that a line's text and its
/// result agree.
class RecordingDisplay : public FunctionDisplay {
  public:
    explicit RecordingDisplay(std::vector<std::string>& record) : record_(record) {}

    void FunctionBegins(FunctionCode function) override { function_ = function; }
    void LinesCleared() override { record_.push_back("cleared"); }
    void LineBegins(int line, const std::string& text) override;
    void LineEnds(int line, const std::string& text, const RegionResult& result) override;
    void ProgressMoves(std::int16_t percent) override {
        record_.push_back("progress " + std::to_string(percent));
    }
    void ReadCompletes() override { record_.push_back("closes"); }
    void ImageChanged(const Regions& regions) override;
    bool StopRequested() override { return looksBeforeStop == 0 || --looksBeforeStop == 0; }

    int looksBeforeStop = -1;  ///< how often the run may ask whether to go on; below 0: for ever

  private:
    std::vector<std::string>& record_;
    FunctionCode function_ = FunctionAuto;  // none yet
};

/// A device in a simulated board, a host image, and everything between them, on the fake clock.
class FunctionBench {
  public:
    explicit FunctionBench(const DeviceRecord& device, Simulator::FaultPlan faults = {});

    /// Runs a function and returns what was recorded meanwhile, then "error" when ErrorFlag is set.
    std::vector<std::string> Run(std::int16_t functionCode, const Regions& regions = {});

    Simulator::DeviceMemory& Socket() { return engine.Memory(); }

    /// Fills the image's program memory, ID block and EEPROM region with bytes of a seeded pattern,
    /// or with what is blank for the device.
    void FillImage(unsigned seed = 1);
    void BlankImage();

    /// Makes the device hold exactly what the image does.
    void CopyImageToSocket();

    /// The bytes of the image that the device has.
    std::vector<int> Places() const;

    DeviceRecord device;
    MemoryImage image;
    AutoSequence series;
    FakeDesktop desktop;
    Simulator::BoardEngine engine;
    Simulator::FaultyBoard board;
    LinkState state;
    std::unique_ptr<SerialControl> cm;
    std::unique_ptr<WindowTimer> totmr;
    std::unique_ptr<WindowTimer> tmrWait;
    ProgrammerLink link;
    RecordingDisplay display;
    FunctionRun run;
};

}  // namespace Tamber
