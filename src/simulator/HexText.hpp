#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace Tamber::Simulator {

/// Two upper-case hexadecimal digits.
[[nodiscard]] std::string ByteText(std::uint8_t value);

/// Four upper-case hexadecimal digits.
[[nodiscard]] std::string WordText(std::uint16_t value);

/// The bytes in hexadecimal with a space between them; empty for no bytes.
[[nodiscard]] std::string BytesText(std::span<const std::uint8_t> bytes);

/// The value of two hexadecimal digits in either case; nullopt for anything else.
[[nodiscard]] std::optional<std::uint8_t> ByteFromText(std::string_view twoDigits);

}  // namespace Tamber::Simulator
