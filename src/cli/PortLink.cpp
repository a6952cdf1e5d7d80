#include "cli/PortLink.hpp"

namespace Tamber::Cli {

namespace fs = std::filesystem;

tl::expected<void, std::string> MakePortLink(const fs::path& folder, int commPort,
                                             const fs::path& port) {
    const fs::path link = folder / ("com" + std::to_string(commPort));
    std::error_code error;
    if (fs::exists(fs::symlink_status(link, error)) && !fs::is_symlink(link, error))
        return tl::unexpected(link.string() + " is no link and is left alone.");
    const fs::path target = fs::absolute(port, error);
    if (!fs::exists(target, error))
        return tl::unexpected(target.string() + ": there is no such port.");
    // Made under another name first: COMn leads somewhere at every moment.
    fs::path fresh = link;
    fresh += ".new";
    fs::remove(fresh, error);
    fs::create_symlink(target, fresh, error);
    if (!error)
        fs::rename(fresh, link, error);
    if (error)
        return tl::unexpected(link.string() + ": " + error.message());
    return {};
}

fs::path StablePathOf(const fs::path& port, const fs::path& folder) {
    std::error_code error;
    const fs::path wanted = fs::canonical(port, error);
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (fs::canonical(entry->path(), ignored) == wanted && !wanted.empty())
            return entry->path();
    }
    return {};
}

}  // namespace Tamber::Cli
