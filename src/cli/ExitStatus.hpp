#pragma once

#include <span>
#include <string_view>

namespace Tamber::Cli {

/// What the program tells whoever called it. The numbers are part of its interface.
enum class ExitStatus {
    Done = 0,
    WrongUsage = 2,
    FileUnusable = 3,
    PortNotOpened = 4,
    NoBoard = 5,
    BoardSilent = 6,
    ProgrammingFailed = 7,
    DifferencesFound = 8,
    NotBlank = 9,
    EraseUnavailable = 10,
    Interrupted = 130,
};

struct StatusMeaning {
    ExitStatus Status;
    std::string_view Name;     ///< one word, for the JSON output
    std::string_view Meaning;  ///< for people
};

/// All of them, in ascending order.
std::span<const StatusMeaning> StatusMeanings();

const StatusMeaning& MeaningOf(ExitStatus status);

}  // namespace Tamber::Cli
