#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/Machine.hpp"

namespace Tamber::Cli {

/// A serial port of the machine.
struct SerialPortEntry {
    std::filesystem::path Path;
    std::string Description;           ///< as the system describes it, may be empty
    std::filesystem::path StablePath;  ///< keeps leading to the same adapter; empty: there is none
};

/// What the companion needs of the machine besides.
class Machine : public Tamber::Machine {
  public:
    virtual std::vector<SerialPortEntry> SerialPorts() = 0;

    /// The time since any fixed moment; it never runs backwards.
    virtual std::chrono::microseconds Now() const = 0;

    /// Waits until `descriptor` has something to read or has come to its end; false: until the user
    /// wants the program to end.
    virtual bool AwaitInput(int descriptor) = 0;

    /// True once the user wants the program to end. It stays so.
    virtual bool Interrupted() const = 0;
};

}  // namespace Tamber::Cli
