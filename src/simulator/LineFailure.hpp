#pragma once

#include <string>

namespace Tamber::Simulator {

/// Why a text cannot be used.
struct LineFailure {
    int Line = 0;  ///< from 1; one after the last when the text ends too soon
    std::string Cause;
};

}  // namespace Tamber::Simulator
