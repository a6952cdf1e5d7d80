#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Tamber::Bench {

/// A simulated board in a process of its own, on another processor core where there is one, with
/// the largest device in its socket: 8,192 words, 256 bytes of EEPROM. It has a working folder in
/// which COM1 leads to it. Ends the program with a message when the board does not start.
class BoardProcess {
  public:
    /// `options` go behind those that describe the device.
    explicit BoardProcess(std::vector<std::string> options = {});
    BoardProcess(const BoardProcess&) = delete;
    BoardProcess& operator=(const BoardProcess&) = delete;
    ~BoardProcess();

    /// The working folder, with the program's data files for that device.
    const std::filesystem::path& Folder() const { return folder_; }
    std::filesystem::path Port() const { return folder_ / "com1"; }

  private:
    void MakeFolder();
    void Start(std::vector<std::string> arguments);

    std::filesystem::path folder_;
    pid_t process_ = -1;
};

/// Ends the program with a message when `good` is false.
void Require(bool good, const std::string& message);

/// A command line as the system wants it, ended by a null pointer. It points into `words`.
std::vector<char*> Values(std::vector<std::string>& words);

}  // namespace Tamber::Bench
