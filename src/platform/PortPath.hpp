#pragma once

#include <filesystem>
#include <string>

namespace Tamber {

/// The path of COM`commPort`: the file or link "com1", "com2", ... in `directory` where there is
/// one (a link that leads nowhere counts too), else /dev/ttyS0 for 1, /dev/ttyS1 for 2, and so on.
std::filesystem::path PortPath(const std::filesystem::path& directory, int commPort);

/// That path for people: followed by the target where it is a link, and by whether the port is
/// there.
std::string PortDescription(const std::filesystem::path& directory, int commPort);

}  // namespace Tamber
