#include "simulator/BoardTrace.hpp"

#include "simulator/HexText.hpp"

namespace Tamber::Simulator {

std::string TraceLine(std::chrono::microseconds time, char mark,
                      std::span<const std::uint8_t> bytes, std::string_view gloss) {
    const auto decimals = std::to_string(time.count() % 1'000'000);
    std::string line = std::to_string(time.count() / 1'000'000) + '.';
    line += std::string(6 - decimals.size(), '0') + decimals + ' ' + mark + ' ';
    line += BytesText(bytes);
    if (!bytes.empty())
        line += ' ';
    return line.append("; ").append(gloss);
}

}  // namespace Tamber::Simulator
