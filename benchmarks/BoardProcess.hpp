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
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
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

/// A working folder of the program, with the largest device selected: 8,192 words, 256 bytes of
/// EEPROM.
class WorkingFolder {
  public:
    WorkingFolder();
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;
    ~WorkingFolder();

    std::filesystem::path Path;
};

/// A simulated board in a process of its own, with that device in its socket, on another processor
/// core where there is one. It has a working folder in which COM1 leads to it.
class BoardProcess {
  public:
    /// `options` follow those that describe the device.
    explicit BoardProcess(const std::vector<std::string>& options = {});

    const std::filesystem::path& Folder() const { return folder_.Path; }
    std::filesystem::path Port() const { return Folder() / "com1"; }

  private:
    WorkingFolder folder_;
    Process process_;
};

/// Fills program memory, all 8,192 words, so that no block is like its neighbours.
void FillProgramMemory(MemoryImage& image);

}  // namespace Tamber::Bench
