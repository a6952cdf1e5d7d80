#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <vector>

#include "cli/Outcome.hpp"
#include "operations/FunctionDisplay.hpp"

namespace Tamber::Cli {

struct CommandForm;

/// `--set N=PATH` of the command ports.
struct PortSetting {
    int CommPort = 0;  ///< 1..4
    std::filesystem::path Path;
};

/// What becomes of a calibration word.
enum class CalibrationUse {
    Keep,   ///< the file's, or else the device's
    File,   ///< the file's or none
    Drop,   ///< nobody looks at it
    Given,  ///< the one on the command line
};

/// What the command line asks for.
struct Arguments {
    const CommandForm* Command = nullptr;  ///< never null once parsed
    std::filesystem::path Folder = ".";    ///< the working folder
    std::string File;                      ///< a HEX file; "-" is standard input or output
    std::string Output;                    ///< the HEX file to write; "-" is standard output
    std::string Device;                    ///< empty: the one the settings select
    std::string Port;                      ///< a number or a path; empty: the settings' port
    std::optional<Regions> Only;           ///< the regions that take part; none: all
    std::optional<PortSetting> Setting;    ///< the link to make
    bool Simulate = false;                 ///< a simulated board instead of the port
    std::filesystem::path Socket;          ///< HEX file for its socket; empty: a blank device
    std::filesystem::path Trace;           ///< empty: none is written
    bool Force = false;                    ///< take a file that is not for the device
    bool AsIs = false;                     ///< leave the words of a file where they are
    bool Exact = false;                    ///< compare every bit
    bool Strict = false;  ///< end with a failure where anything is wrong with a file
    CalibrationUse Calibration = CalibrationUse::Keep;
    std::uint16_t CalibrationWord = 0;  ///< the one that is Given
    bool Json = false;
    bool Quiet = false;
};

/// The answer to a command line that asks for nothing to be done: help, the version, or a wrong
/// one.
struct Answer {
    ExitStatus Status = ExitStatus::Done;
    std::string Text;   ///< for standard output when Done, else for standard error
    bool Json = false;  ///< the wrong command line held --json
};

/// Takes the command line apart. `words` leave out the program's name.
[[nodiscard]] tl::expected<Arguments, Answer> ParseArguments(const std::vector<std::string>& words);

}  // namespace Tamber::Cli
