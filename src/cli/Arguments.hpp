#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "cli/ExitStatus.hpp"
#include "operations/FunctionDisplay.hpp"

namespace Tamber::Cli {

enum class Command {
    Identify,
    Devices,
    Ports,
    Read,
    Program,
    Verify,
    Erase,
    Blank,
    Auto,
    Inspect,
};

/// The name under which a command is called.
const char* NameOf(Command command);

/// `--set N=PATH` of the command ports.
struct PortSetting {
    int CommPort = 0;  ///< 1..4
    std::filesystem::path Path;
};

/// What the command line asks for.
struct Arguments {
    Command Asked = Command::Identify;
    std::filesystem::path Folder = ".";  ///< the working folder
    std::string File;                    ///< a HEX file; "-" is standard input or output
    std::string Device;                  ///< empty: the one the settings select
    std::string Port;                    ///< a number, a path; empty: the settings' one
    std::optional<Regions> Only;         ///< the regions that take part; none: all
    std::optional<PortSetting> Setting;  ///< the link to make
    bool Simulate = false;               ///< a simulated board in place of the port
    std::filesystem::path Socket;        ///< what is in its socket; empty: a blank device
    std::filesystem::path Trace;         ///< empty: none is written
    bool Json = false;
    bool Quiet = false;
};

/// A command line that asks for nothing to be done: help, the version, or a wrong one.
struct Answer {
    ExitStatus Status = ExitStatus::Done;
    std::string Text;   ///< for standard output when Done, else for standard error
    bool Json = false;  ///< the wrong command line held --json
};

/// Takes the command line apart. `words` leave out the program's name.
std::variant<Arguments, Answer> ParseArguments(const std::vector<std::string>& words);

}  // namespace Tamber::Cli
