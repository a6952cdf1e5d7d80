#include "simulator/OptionValues.hpp"

#include <charconv>

namespace Tamber::Simulator {

std::optional<int> NumberFromText(std::string_view text, int least, int most) {
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        base = 16;
        text.remove_prefix(2);
    }
    if (text.starts_with('-'))
        return std::nullopt;
    int value = 0;
    const auto* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value, base);
    if (error != std::errc{} || rest != end || value < least || value > most)
        return std::nullopt;
    return value;
}

std::vector<std::string_view> Pieces(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (;;) {
        const auto place = text.find(separator);
        pieces.push_back(text.substr(0, place));
        if (place == std::string_view::npos)
            return pieces;
        text.remove_prefix(place + 1);
    }
}

}  // namespace Tamber::Simulator
