#pragma once

#include <optional>
#include <string>
#include <vector>

#include "simulator/BoardEngine.hpp"
#include "simulator/Faults.hpp"

namespace Tamber::Simulator {

/// What the command line of tamber-board asks for. An empty name stands for an option not given.
struct BoardOptions {
    std::string Link;  ///< where the link to the pseudo-terminal goes
    DeviceShape Device;
    Identification Identity;
    std::string LoadFile;          ///< a HEX file the device starts with; else it is blank
    std::string SaveFile;          ///< a HEX file that takes the device's contents
    std::optional<unsigned> Pace;  ///< bits per second; not set: the board answers at once
    bool Trace = false;
    FaultPlan Faults;
    std::string ReplayFile;  ///< a trace to answer by
};

/// How the program ends: its exit status, and what it prints on standard error, or on standard
/// output when the status is 0.
struct Ending {
    int Status = 0;
    std::string Text;
};

/// The exit statuses of failures.
constexpr int Failed = 1;
constexpr int WronglyCalled = 2;

/// Reads the command line; `words` leave out the program's name. When an option is given twice, the
/// last one counts. The failure is the help text, with status 0, or one line that says which option
/// is wrong and why.
[[nodiscard]] tl::expected<BoardOptions, Ending> ParseBoardOptions(std::vector<std::string> words);

}  // namespace Tamber::Simulator
