#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <span>

namespace Tamber::Bench {

/// The link's yardstick: the same bytes sent and received with nothing but the system's own calls.
class RawPort {
  public:
    /// Opens the port and makes it raw.
    explicit RawPort(const std::filesystem::path& port);
    RawPort(const RawPort&) = delete;
    RawPort& operator=(const RawPort&) = delete;
    ~RawPort();

    /// Reads `blocks` blocks, one request at a time, and ends.
    void ReadBlocks(int blocks);

    /// Writes `blocks` blocks in one write sequence, and ends.
    void WriteBlocks(int blocks);

    /// Has the board identify itself.
    void Identify();

    /// Waits 1000 ms for a reply that does not come.
    void WaitInVain();

  private:
    void Write(std::span<const std::uint8_t> bytes) const;
    void Read(std::size_t length);

    int port_;
    std::array<std::uint8_t, 64> reply_{};
};

}  // namespace Tamber::Bench
