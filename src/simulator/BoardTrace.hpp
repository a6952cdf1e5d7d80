#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace Tamber::Simulator {

/// Takes one line of a board's trace, without a line end. May be empty: then nothing is traced.
///
/// A line is `TIME MARK BYTES ; GLOSS`, for example
///
///     12.345678 > 01 52 ; read
///     12.345702 > 04 00 10 00 01 ; block at 0010
///     12.345731 < 11 FF 3F FF 3F FF 3F FF 3F FF 3F FF 3F FF 3F FF 3F ; block at 0010
///
/// TIME is the board's clock in seconds with six decimals. MARK is `>` for a whole frame from the
/// host, `<` for a reply to it, `!` for what the host gets because of a fault, in place of the `<`
/// line before it or of any answer; its TIME is when the host gets it. BYTES are in hexadecimal,
/// the frame's count byte included; there may be none after `!`. The gloss is for people and
/// holds no ` ; `.
using BoardTrace = std::function<void(std::string_view)>;

/// One line in the form above.
std::string TraceLine(std::chrono::microseconds time, char mark,
                      std::span<const std::uint8_t> bytes, std::string_view gloss);

}  // namespace Tamber::Simulator
