#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "simulator/BoardEngine.hpp"
#include "simulator/DeviceMemory.hpp"
#include "simulator/Faults.hpp"

namespace Tamber::Simulator {

/// What the command line of tamber-board asks for.
struct BoardOptions {
    /// Where the link to the pseudo-terminal goes; empty: no link.
    std::string link;
    DeviceShape device;
    Identification identification;
    /// A HEX file the device starts with; empty: it starts blank.
    std::string loadFile;
    /// A HEX file that takes the device's contents; empty: none does.
    std::string saveFile;
    /// The speed of the line in bits per second; not set: the board answers at once.
    std::optional<unsigned> pace;
    bool trace = false;
    bool help = false;
    FaultPlan faults;
    /// A trace to answer by; empty: the board answers for itself.
    std::string replayFile;
};

/// The options, or one line that says which argument is wrong and what would be right. `arguments`
/// leave out the program's name. When an option is given twice the last one counts.
[[nodiscard]] std::variant<BoardOptions, std::string> ParseOptions(
    std::span<const std::string_view> arguments);

/// The text for --help, a line for each option.
[[nodiscard]] std::string HelpText();

}  // namespace Tamber::Simulator
