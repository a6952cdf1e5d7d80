#pragma once

#include <string_view>

#include "files/HexFile.hpp"

namespace Tamber {

/// What the user is told about a load that failed; empty for the failures that end it quietly.
std::string_view HexFailureText(HexFault fault);

/// The title over that text.
constexpr char HexFailureTitle[] = "File Load Error";

}  // namespace Tamber
