#include "cli/Ports.hpp"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "cli/Commands.hpp"
#include "platform/PortPath.hpp"

namespace Tamber::Cli {
namespace {

namespace fs = std::filesystem;

constexpr int CommPorts = 4;

// What a link leads to in the end; empty where that is the path itself.
fs::path Target(const fs::path& path) {
    std::error_code error;
    const fs::path target = fs::weakly_canonical(path, error);
    return error || target == path ? fs::path() : target;
}

void ShowCommPort(Context& context, int number) {
    const fs::path path = PortPath(context.Program.AppPath, number);
    const fs::path target = Target(path);
    std::error_code error;
    const bool there = fs::exists(path, error);
    context.Screen.Asked(fmt::format("COM{}  {}{}{}{}", number, path.string(),
                                     target.empty() ? "" : " -> ", target.string(),
                                     there ? "" : "  (not there)"));
    context.Facts["com"].push_back({{"number", number},
                                    {"path", path.string()},
                                    {"target", target.empty() ? path.string() : target.string()},
                                    {"exists", there}});
}

void ShowPort(Context& context, const SerialPortEntry& port) {
    context.Screen.Asked(port.Path.string() +
                         (port.Description.empty() ? "" : "  " + port.Description));
    if (!port.StablePath.empty())
        context.Screen.Asked("    " + port.StablePath.string());
    context.Facts["ports"].push_back({{"path", port.Path.string()},
                                      {"description", port.Description},
                                      {"stable", port.StablePath.string()}});
}

void HintStablePath(Context& context, const fs::path& path) {
    for (const SerialPortEntry& port : context.Host.SerialPorts())
        if (port.Path == path && !port.StablePath.empty())
            context.Screen.Note(
                "That name may mean another adapter next time; this one stays with the adapter: " +
                port.StablePath.string());
}

// Makes COM`commPort` of the working folder stand for `port`, by a link there. A link that was
// there is replaced, anything else left alone.
Outcome MakePortLink(const fs::path& folder, int commPort, const fs::path& port) {
    const fs::path link = folder / fmt::format("com{}", commPort);
    std::error_code error;
    if (fs::exists(fs::symlink_status(link, error)) && !fs::is_symlink(link, error))
        return Failed(ExitStatus::FileUnusable,
                      link.string() + " is not a link and is left alone.");
    const fs::path target = fs::absolute(port, error);
    if (!fs::exists(target, error))
        return Failed(ExitStatus::FileUnusable, target.string() + ": there is no such port.");
    // Made under another name first: COMn leads somewhere at every moment.
    fs::path fresh = link;
    fresh += ".new";
    fs::remove(fresh, error);
    fs::create_symlink(target, fresh, error);
    if (!error)
        fs::rename(fresh, link, error);
    if (error)
        return Failed(ExitStatus::FileUnusable, link.string() + ": " + error.message());
    return {};
}

}  // namespace

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

Outcome ShowPorts(Context& context) {
    if (const auto& setting = context.Asked.Setting) {
        if (auto made = MakePortLink(context.Program.AppPath, setting->CommPort, setting->Path);
            !made)
            return made;
        HintStablePath(context, setting->Path);
    }
    context.Facts["ports"] = nlohmann::ordered_json::array();
    for (int number = 1; number <= CommPorts; ++number)
        ShowCommPort(context, number);
    for (const SerialPortEntry& port : context.Host.SerialPorts())
        ShowPort(context, port);
    return {};
}

}  // namespace Tamber::Cli
