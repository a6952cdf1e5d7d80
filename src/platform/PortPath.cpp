#include "platform/PortPath.hpp"

#include <string>
#include <system_error>

namespace Tamber {

std::filesystem::path PortPath([[maybe_unused]] const std::filesystem::path& directory,
                               int commPort) {
#ifdef _WIN32
    return "COM" + std::to_string(commPort);
#else
    const std::filesystem::path local = directory / ("com" + std::to_string(commPort));
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::symlink_status(local, error)))
        return local;
    return "/dev/ttyS" + std::to_string(commPort - 1);
#endif
}

}  // namespace Tamber
