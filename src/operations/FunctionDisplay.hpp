#pragma once

#include <cstdint>
#include <string>

namespace Tamber {

/// The memory regions of a device, as the user ticks them for a function.
struct Regions {
    bool ProgramMemory = true;
    bool Eeprom = true;
    bool IdLocations = true;
    bool ConfigurationWord = true;
};

/// Where a device function shows what it does. The calls come in this order: RunBegins, then for
/// each region a line that begins, progress, and the same line's end, then RunEnds. A line may end
/// without having begun, where a region has only a result.
class FunctionDisplay {
  public:
    virtual ~FunctionDisplay() = default;

    /// A function was started: until RunEnds no other may start and the display must stay.
    virtual void RunBegins() = 0;
    virtual void RunEnds() = 0;

    /// All message lines are empty again.
    virtual void LinesCleared() = 0;

    /// A region begins: message line `line` (0..5) now reads `text`.
    virtual void LineBegins(int line, const std::string& text) = 0;

    /// A region has ended, well or badly: message line `line` now reads `text`, the whole of it.
    virtual void LineEnds(int line, const std::string& text) = 0;

    /// The running region has come to `percent`, 0..100. Called for every block.
    virtual void ProgressMoves(std::int16_t percent) = 0;

    /// A Read has completed: the display goes off the screen, at once, though its run goes on.
    virtual void ReadCompletes() = 0;

    /// The image has changed in these regions; whatever shows them is to be made anew.
    virtual void ImageChanged(const Regions& regions) = 0;
};

}  // namespace Tamber
