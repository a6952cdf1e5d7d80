#include "cli/Outcome.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace Tamber::Cli {
namespace {

constexpr std::array Meanings{
    StatusMeaning{ExitStatus::Done, "done", "done"},
    StatusMeaning{ExitStatus::WrongUsage, "usage", "wrong usage"},
    StatusMeaning{ExitStatus::FileUnusable, "file",
                  "a file of the working folder or a HEX file cannot be used"},
    StatusMeaning{ExitStatus::PortNotOpened, "port", "the port cannot be opened"},
    StatusMeaning{ExitStatus::NoBoard, "no-board", "no board answers at the port"},
    StatusMeaning{ExitStatus::BoardSilent, "board-silent", "the board stopped answering"},
    StatusMeaning{ExitStatus::ProgrammingFailed, "programming-failed", "programming failed"},
    StatusMeaning{ExitStatus::DifferencesFound, "differences", "verify found differences"},
    StatusMeaning{ExitStatus::NotBlank, "not-blank", "the device is not blank"},
    StatusMeaning{ExitStatus::EraseUnavailable, "no-erase",
                  "the device cannot be erased by the board"},
    StatusMeaning{ExitStatus::FileNotForDevice, "not-for-device",
                  "the file is not for this device"},
    StatusMeaning{ExitStatus::Interrupted, "interrupted", "interrupted"},
};

}  // namespace

std::span<const StatusMeaning> StatusMeanings() {
    return Meanings;
}

const StatusMeaning& MeaningOf(ExitStatus status) {
    return *std::ranges::find(Meanings, status, &StatusMeaning::Status);
}

tl::unexpected<Failure> Failed(ExitStatus status) {
    return Failed(status, std::string(MeaningOf(status).Meaning));
}

tl::unexpected<Failure> Failed(ExitStatus status, std::string message) {
    return tl::unexpected(Failure{status, std::move(message)});
}

}  // namespace Tamber::Cli
