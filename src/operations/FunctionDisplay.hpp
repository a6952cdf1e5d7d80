#pragma once

#include <cstdint>
#include <string>

#include "core/AutoSequence.hpp"
#include "operations/RegionResult.hpp"

namespace Tamber {

/// The memory regions of a device, as the user ticks them for a function.
struct Regions {
    bool ProgramMemory = true;
    bool Eeprom = true;
    bool IdLocations = true;
    bool ConfigurationWord = true;
};

/// Where a device function shows what it does, and asks whether to go on. The calls of a run come
/// in this order:
///
///     ProgressMoves(0) RunBegins LinesCleared
///         for each function (an Auto run has several):
///             FunctionBegins
///                 for each region: LineBegins, ProgressMoves..., LineEnds
///             ReadCompletes ImageChanged      after a Read that has read everything
///             LinesCleared                    after each function of an Auto run that goes on
///     RunEnds
///
/// A line may end without having begun, where a region has only a result, and progress may move
/// between lines. After a LineEnds with an outcome other than Good the function may go on with its
/// next region. Line numbers are 0..5 and never fall before the lines are cleared.
class FunctionDisplay {
  public:
    virtual ~FunctionDisplay() = default;

    /// A run was started: until RunEnds no other may start and the display must stay.
    virtual void RunBegins() {}
    virtual void RunEnds() {}

    /// Device function `function` (0..4) begins.
    virtual void FunctionBegins(FunctionCode /*function*/) {}

    /// All message lines are empty again.
    virtual void LinesCleared() {}

    /// A region begins: message line `line` (0..5) now reads `text`.
    virtual void LineBegins(int /*line*/, const std::string& /*text*/) {}

    /// A region has ended: message line `line` now reads `text`, the whole of it.
    virtual void LineEnds(int /*line*/, const std::string& /*text*/,
                          const RegionResult& /*result*/) {}

    /// The running region has come to `percent`, 0..100. Called for every block.
    virtual void ProgressMoves(std::int16_t /*percent*/) {}

    /// A Read has completed: the display goes off the screen, at once, though its run goes on.
    virtual void ReadCompletes() {}

    /// The image has changed in these regions; whatever shows them must be brought up to date.
    virtual void ImageChanged(const Regions& /*regions*/) {}

    /// Asked before every region and every block, and while a pause lasts, which then ends. True
    /// ends the run there, with the sequence closed as at the end of a region; once true it must
    /// stay so until the run has ended.
    virtual bool StopRequested() { return false; }
};

}  // namespace Tamber
