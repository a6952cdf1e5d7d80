#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "cli/Context.hpp"
#include "core/AutoSequence.hpp"

namespace Tamber::Cli {

enum class FileUse { None, Required, Optional };

/// What a command needs of the working folder.
enum class FolderUse {
    None,
    Port,  ///< the settings, where the command line names no port
    All,
};

/// One command of the command line.
struct CommandForm {
    std::string_view Name = {};
    const char* Meaning = "";
    Outcome (*Carry)(Context&) = nullptr;  ///< reports to the terminal and to the context's Facts
    FileUse File = FileUse::None;
    const char* FileName = "";  ///< how the usage names the file
    FolderUse Folder = FolderUse::All;
    bool NeedsDevice = true;
    bool SetsPorts = false;         ///< it has the option --set
    bool RefusesFiles = false;      ///< it has --force, as it refuses a file for another device
    bool KeepsCalibration = false;  ///< it has --calibration
    bool Compares = false;          ///< it has --exact
    bool Strict = false;            ///< it has --strict
    const char* OutputName = "";    ///< how the usage names the file that it writes; empty: none
    std::optional<FunctionCode> Function = {};  ///< what it has the board do
};

/// All of them, in the order of the help.
std::span<const CommandForm> CommandForms();

[[nodiscard]] Outcome Identify(Context& context);
[[nodiscard]] Outcome ShowPorts(Context& context);
[[nodiscard]] Outcome ReadToFile(Context& context);
[[nodiscard]] Outcome RunAutoSeries(Context& context);
[[nodiscard]] Outcome InspectFile(Context& context);
[[nodiscard]] Outcome ConvertFile(Context& context);

/// Erase, blank check, program and verify.
[[nodiscard]] Outcome RunOneFunction(Context& context);

/// Does what the arguments ask for and reports how it ended, as JSON too where that is wanted.
ExitStatus RunCommand(const Arguments& arguments, Machine& machine, const Streams& streams);

/// Shows the answer to a command line that asks for nothing to be done.
ExitStatus Give(const Answer& answer, const Streams& streams);

}  // namespace Tamber::Cli
