#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace Tamber::Simulator {

/// The time a board goes by, in microseconds since any fixed moment. It never runs backwards.
using BoardClock = std::function<std::chrono::microseconds()>;

/// A programmer board at the far end of a serial line, as the host sees it. It does nothing on its
/// own: its owner delivers the host's bytes and collects the reply bytes when they are due.
class BoardLine {
  public:
    virtual ~BoardLine() = default;

    /// Bytes the host has just written, in any portions: a frame may be cut anywhere.
    virtual void Receive(std::span<const std::uint8_t> bytes) = 0;

    /// The clock time at which Take should be called next because something happens on the line
    /// (usually: a reply byte is due). It may lie in the past. nullopt: nothing is under way.
    virtual std::optional<std::chrono::microseconds> NextDue() const = 0;

    /// Appends every reply byte that is due by now, in order, to `bytes`. Each byte comes once.
    virtual void Take(std::vector<std::uint8_t>& bytes) = 0;

    /// False while the board does not read its line: what the host writes stays on its way.
    virtual bool Reads() const { return true; }

    /// True once the board has gone from the line for good: it takes and gives nothing more.
    virtual bool HungUp() const = 0;
};

}  // namespace Tamber::Simulator
