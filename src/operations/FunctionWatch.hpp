#pragma once

#include <cstdint>

namespace Tamber {

/// What a front end may want of a run besides a display of it.
class FunctionWatch {
  public:
    virtual ~FunctionWatch() = default;

    /// Device function `functionCode` (0..4) begins. An Auto run has one after the other.
    virtual void FunctionBegins(std::int16_t functionCode) = 0;

    /// Asked before every region and every block, and while a pause lasts, which then ends. True
    /// ends the run there, with the sequence closed as at the end of a region; once true it must
    /// stay so until the run has ended.
    virtual bool StopRequested() = 0;
};

}  // namespace Tamber
