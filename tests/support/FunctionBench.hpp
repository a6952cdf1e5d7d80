#pragma once

#include <memory>

#include "operations/FunctionRun.hpp"
#include "simulator/BoardEngine.hpp"
#include "simulator/Faults.hpp"
#include "support/FakeDesktop.hpp"

namespace Tamber {

/// Two blocks of program memory and two of EEPROM.
inline const DeviceRecord Small{"small", 7, 16, 16, 1};

/// Writes what a device function shows into the desktop's record: "line 0 ...", "end 0 ...",
/// "progress 50", "begins", "ends", "cleared", "closes", "views PM EM ID CW".
class RecordingDisplay : public FunctionDisplay {
  public:
    explicit RecordingDisplay(std::vector<std::string>& record) : record_(record) {}

    void RunBegins() override { record_.push_back("begins"); }
    void RunEnds() override { record_.push_back("ends"); }
    void LinesCleared() override { record_.push_back("cleared"); }
    void LineBegins(int line, const std::string& text) override {
        record_.push_back("line " + std::to_string(line) + " " + text);
    }
    void LineEnds(int line, const std::string& text) override {
        record_.push_back("end " + std::to_string(line) + " " + text);
    }
    void ProgressMoves(std::int16_t percent) override {
        record_.push_back("progress " + std::to_string(percent));
    }
    void ReadCompletes() override { record_.push_back("closes"); }
    void ImageChanged(const Regions& regions) override {
        record_.push_back(std::string("views") + (regions.ProgramMemory ? " PM" : "") +
                          (regions.Eeprom ? " EM" : "") + (regions.IdLocations ? " ID" : "") +
                          (regions.ConfigurationWord ? " CW" : ""));
    }

  private:
    std::vector<std::string>& record_;
};

/// A device in a simulated board, a host image, and everything between them, on the fake clock.
class FunctionBench {
  public:
    explicit FunctionBench(const DeviceRecord& device, Simulator::FaultPlan faults = {});

    /// Runs a function of the dialog's list and returns what was recorded meanwhile, without the
    /// frame of every run (begins, cleared, ends).
    std::vector<std::string> Run(std::int16_t functionCode, const Regions& regions = {});

    /// The same without progress.
    std::vector<std::string> RunQuietly(std::int16_t functionCode, const Regions& regions = {});

    /// Just the frames that went to the board, or just the message lines as they ended.
    static std::vector<std::string> Wire(const std::vector<std::string>& record);
    static std::vector<std::string> Ends(const std::vector<std::string>& record);

    Simulator::DeviceMemory& Socket() { return engine.Memory(); }

    /// Fills the image's program memory, ID block and EEPROM region with bytes of a seeded pattern.
    void FillImage(unsigned seed = 1);

    /// Makes the device hold exactly what the image does.
    void CopyImageToSocket();

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
