#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <vector>

namespace Tamber::Simulator {

/// One frame from the host: a count byte and as many bytes as it says.
struct Frame {
    /// The count byte first. Fewer bytes than it announces only when `dropped`.
    std::vector<std::uint8_t> bytes;
    /// The rest did not follow in time; what is here means nothing.
    bool dropped = false;

    /// A command frame with this letter.
    [[nodiscard]] bool IsCommand(char letter) const;
    /// A command frame with any letter.
    [[nodiscard]] bool IsCommand() const { return IsWhole(2); }
    [[nodiscard]] bool IsReadAddress() const { return IsWhole(5); }
    [[nodiscard]] bool IsWriteData() const { return IsWhole(21); }
    /// The byte address in a read-address or write-data frame.
    [[nodiscard]] std::uint16_t Address() const;

  private:
    [[nodiscard]] bool IsWhole(std::size_t length) const {
        return !dropped && bytes.size() == length;
    }
};

/// Cuts the host's bytes into frames, whatever portions they come in. A byte where a count byte
/// belongs is always taken as one, so nonsense is skipped as a frame of that length, or dropped.
class FrameReader {
  public:
    /// A frame that has begun is dropped when the line has been silent for this long within it.
    static constexpr std::chrono::milliseconds Patience{100};

    /// Takes bytes that arrived at `now` and gives the frames they complete, after the dropped one,
    /// if there is one.
    [[nodiscard]] std::vector<Frame> Feed(std::span<const std::uint8_t> bytes,
                                          std::chrono::microseconds now);

  private:
    std::vector<std::uint8_t> partial_;
    std::chrono::microseconds lastByte_{};
};

}  // namespace Tamber::Simulator
