#pragma once

#include <span>
#include <string>
#include <string_view>
#include <tl/expected.hpp>

namespace Tamber::Cli {

/// What the program returns to its caller. The numbers are part of its interface.
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
    FileNotForDevice = 11,
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

/// Why a command or a step of it did not succeed.
struct Failure {
    ExitStatus Status = ExitStatus::WrongUsage;  ///< never Done
    std::string Message;                         ///< for people; may have several lines
};

using Outcome = tl::expected<void, Failure>;

/// A failure in the words of its status.
tl::unexpected<Failure> Failed(ExitStatus status);
tl::unexpected<Failure> Failed(ExitStatus status, std::string message);

}  // namespace Tamber::Cli
