#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/EventDelivery.hpp"
#include "platform/SerialControl.hpp"
#include "platform/WindowTimer.hpp"

namespace Tamber::Cli {

/// A serial port of the machine.
struct SerialPortEntry {
    std::filesystem::path Path;
    std::string Description;           ///< as the system describes it, may be empty
    std::filesystem::path StablePath;  ///< keeps leading to the same adapter; empty: there is none
};

/// What the program needs of the machine it runs on. It outlives everything it makes.
class Machine {
  public:
    virtual ~Machine() = default;

    virtual EventDelivery& Events() = 0;
    virtual std::unique_ptr<WindowTimer> NewTimer() = 0;

    /// A control for the port behind `path`, whatever number it is opened with.
    virtual std::unique_ptr<SerialControl> NewSerialControl(const std::filesystem::path& path) = 0;

    virtual std::vector<SerialPortEntry> SerialPorts() = 0;

    /// The time since any fixed moment; it never runs backwards.
    virtual std::chrono::microseconds Now() const = 0;

    /// True once the user wants the program to end. It stays so.
    virtual bool Interrupted() const = 0;
};

}  // namespace Tamber::Cli
