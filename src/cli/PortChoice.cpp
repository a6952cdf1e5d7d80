#include "cli/PortChoice.hpp"

#include <charconv>

#include "platform/PortPath.hpp"

namespace Tamber::Cli {
namespace {

std::optional<int> Number(const std::string& text) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end)
        return std::nullopt;
    return number;
}

}  // namespace

PortChoice ChoosePort(const std::string& asked, const modFunc& program) {
    const std::optional<int> number =
        asked.empty() ? program.settings.CommPortNumber : Number(asked);
    if (number)
        return {number, PortPath(program.AppPath, *number)};
    return {std::nullopt, asked};
}

}  // namespace Tamber::Cli
