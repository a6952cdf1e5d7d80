#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "modFunc.hpp"

namespace Tamber::Cli {

/// The port that a command is to use.
struct PortChoice {
    std::optional<int> CommPort;  ///< its number, when it is given by one
    std::filesystem::path Path;
};

/// `asked` is a port number or a path; when it is empty, the settings' port number counts.
PortChoice ChoosePort(const std::string& asked, const modFunc& program);

}  // namespace Tamber::Cli
