#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace Tamber::Simulator {

/// A whole number in decimal, or in hexadecimal after 0x, from `least` to `most`; nullopt for
/// anything else, spaces and signs included.
[[nodiscard]] std::optional<int> NumberFromText(std::string_view text, int least, int most);

/// The pieces between the separators: at least one, and empty ones count.
[[nodiscard]] std::vector<std::string_view> Pieces(std::string_view text, char separator);

}  // namespace Tamber::Simulator
