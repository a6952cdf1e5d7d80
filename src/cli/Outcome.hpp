#pragma once

#include <string>
#include <utility>

#include "cli/ExitStatus.hpp"

namespace Tamber::Cli {

/// What came of a command or of a step of it.
struct Outcome {
    ExitStatus Status = ExitStatus::Done;
    std::string Message;  ///< what went wrong, for people; may have several lines

    bool Done() const { return Status == ExitStatus::Done; }
};

/// A failure in the words of its status.
inline Outcome Failed(ExitStatus status) {
    return {status, std::string(MeaningOf(status).Meaning)};
}

inline Outcome Failed(ExitStatus status, std::string message) {
    return {status, std::move(message)};
}

}  // namespace Tamber::Cli
