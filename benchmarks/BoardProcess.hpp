#pragma once

#include <sys/resource.h>
#include <sys/types.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "core/MemoryImage.hpp"

namespace Tamber::Bench {

/// Another program, run in a folder. Where it cannot be run, the benchmark ends with a message.
class Process {
  public:
    Process(std::vector<std::string> words, const std::filesystem::path& folder);
    Process(Process&&) = delete;
    ~Process();

    /// Waits for a line of its output.
    std::string Line();

    /// Waits for its end, which must be a good one; returns what it used.
    rusage Wait();

  private:
    std::string name_;
    pid_t id_ = -1;
    std::FILE* output_ = nullptr;
};

/// A simulated board in a process of its own, on another processor core where there is one, with
/// the largest device in its socket: 8,192 words, 256 bytes of EEPROM. It has a working folder with
/// the program's data files for that device, in which COM1 leads to the board.
class BoardProcess {
  public:
    /// `options` follow those that describe the device.
    explicit BoardProcess(const std::vector<std::string>& options = {});
    ~BoardProcess();

    const std::filesystem::path& Folder() const { return folder_; }
    std::filesystem::path Port() const { return folder_ / "com1"; }

  private:
    std::filesystem::path folder_;
    Process process_;
};

/// Fills program memory, all 8,192 words, so that no block is like its neighbours.
void FillProgramMemory(MemoryImage& image);

}  // namespace Tamber::Bench
