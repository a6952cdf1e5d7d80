#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace Tamber {

/// A serial port that carries every byte value unchanged and is polled: no event is raised for
/// received data. Nothing here throws or waits.
class SerialControl {
  public:
    virtual ~SerialControl() = default;

    /// Opens the port at `path` with 57600 baud, no parity, 8 data bits and 1 stop bit. The
    /// modem-control lines stay as the system sets them. The failure is text for the user: the
    /// system's reason, the path and, where that helps, what to do.
    [[nodiscard]] virtual tl::expected<void, std::string> PortOpen(
        const std::filesystem::path& path) = 0;

    /// Sends `bytes` in one write. Bytes for a port that is not open, or has gone away, are lost;
    /// the wait for the reply then times out.
    virtual void Output(std::span<const std::uint8_t> bytes) = 0;

    /// The number of received bytes waiting to be taken.
    virtual int InBufferCount() = 0;

    /// Takes in, without waiting, what the system holds for this port and has not yet handed over:
    /// InBufferCount then counts it.
    virtual void TakeIn() {}

    /// Replaces `bytes` by all received bytes that are waiting.
    virtual void Input(std::vector<std::uint8_t>& bytes) = 0;

    /// True once an open port has gone away, as when its adapter is pulled out. Known at the latest
    /// when the next wait has timed out.
    virtual bool PortLost() const { return false; }
};

}  // namespace Tamber
