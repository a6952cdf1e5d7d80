#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <vector>

namespace Tamber::Simulator {

/// One frame from the host: a count byte and as many bytes as it says.
struct Frame {
    std::vector<std::uint8_t> Bytes;  ///< the count byte first
    bool Dropped = false;             ///< the rest did not follow in time; ignore what is here
    bool FollowsRead = false;         ///< the frame before this one was the command "R"

    /// A command frame with this letter.
    bool IsCommand(char letter) const;
    /// A command frame with any letter.
    bool IsCommand() const { return IsWhole(2); }
    bool IsReadAddress() const { return IsWhole(5); }
    bool IsWriteData() const { return IsWhole(21); }
    /// A frame that is answered: identification, the address of a block read, a block write.
    bool IsRequest() const {
        return IsCommand('T') || (IsReadAddress() && FollowsRead) || IsWriteData();
    }
    /// The byte address in a read-address or write-data frame.
    std::uint16_t Address() const;

  private:
    bool IsWhole(std::size_t length) const { return !Dropped && Bytes.size() == length; }
};

/// Cuts the host's bytes into frames, whatever portions they come in. A byte where a count byte
/// belongs is always taken as one, so nonsense is skipped as a frame of that length, or dropped.
class FrameReader {
  public:
    /// An unfinished frame is dropped when no byte has come for this long.
    static constexpr std::chrono::milliseconds Patience{100};

    /// Takes bytes that arrived at `now`. Returns the frames they complete, after the dropped one
    /// if there is one.
    std::vector<Frame> Feed(std::span<const std::uint8_t> bytes, std::chrono::microseconds now);

  private:
    Frame Finish(bool dropped);

    std::vector<std::uint8_t> partial_;
    std::chrono::microseconds lastByte_{};
    bool readOpen_ = false;
};

}  // namespace Tamber::Simulator
