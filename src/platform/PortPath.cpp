#include "platform/PortPath.hpp"

#include <system_error>

namespace Tamber {

std::filesystem::path PortPath(const std::filesystem::path& directory, int commPort) {
    std::filesystem::path local = directory / ("com" + std::to_string(commPort));
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::symlink_status(local, error)))
        return local;
    return "/dev/ttyS" + std::to_string(commPort - 1);
}

std::string PortDescription(const std::filesystem::path& directory, int commPort) {
    const std::filesystem::path path = PortPath(directory, commPort);
    std::error_code error;
    const std::filesystem::path target = std::filesystem::read_symlink(path, error);
    const std::string link = error ? path.string() : path.string() + " -> " + target.string();
    return link + (std::filesystem::exists(path, error) ? ", present" : ", not there");
}

}  // namespace Tamber
