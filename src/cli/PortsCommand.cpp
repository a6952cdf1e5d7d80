#include <nlohmann/json.hpp>

#include "cli/Commands.hpp"
#include "cli/PortLink.hpp"
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
    context.Screen.Asked("COM" + std::to_string(number) + "  " + path.string() +
                         (target.empty() ? "" : " -> " + target.string()) +
                         (there ? "" : "  (not there)"));
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
            context.Screen.Note("That name may go to another adapter tomorrow; this one stays: " +
                                port.StablePath.string());
}

}  // namespace

Outcome ShowPorts(Context& context) {
    if (const auto& setting = context.Asked.Setting) {
        if (const auto made =
                MakePortLink(context.Program.AppPath, setting->CommPort, setting->Path);
            !made)
            return Failed(ExitStatus::FileUnusable, made.error());
        HintStablePath(context, setting->Path);
    }
    context.Facts["com"] = nlohmann::ordered_json::array();
    context.Facts["ports"] = nlohmann::ordered_json::array();
    for (int number = 1; number <= CommPorts; ++number)
        ShowCommPort(context, number);
    for (const SerialPortEntry& port : context.Host.SerialPorts())
        ShowPort(context, port);
    return {};
}

}  // namespace Tamber::Cli
