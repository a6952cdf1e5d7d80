#include "simulator/BoardTrace.hpp"

#include "core/HexText.hpp"

namespace Tamber::Simulator {

std::string TraceLine(std::chrono::microseconds time, char mark,
                      std::span<const std::uint8_t> bytes, std::string_view gloss) {
    constexpr auto second = 1'000'000;
    auto decimals = std::to_string(second + time.count() % second);  // "1" and six digits
    decimals.front() = '.';
    std::string line = std::to_string(time.count() / second) + decimals + ' ' + mark + ' ';
    for (const auto byte : bytes) {
        AppendHexByte(line, byte);
        line += ' ';
    }
    return line.append("; ").append(gloss);
}

}  // namespace Tamber::Simulator
