#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "link/CommandFrame.hpp"
#include "link/LinkState.hpp"
#include "platform/EventDelivery.hpp"
#include "platform/SerialControl.hpp"
#include "platform/WindowTimer.hpp"

namespace Tamber {

/// The exchanges with the board: every byte that goes out, and the wait for what comes back. Each
/// operation returns when its frames have been handed to the port and, where a reply is awaited,
/// the wait has ended. Input is never discarded: a byte that comes unasked counts into the next
/// reply.
class ProgrammerLink {
  public:
    /// Takes over the tick of `totmr` and starts it: the time-out timer runs from its making on.
    ProgrammerLink(LinkState& state, SerialControl& cm, WindowTimer& totmr, EventDelivery& events);

    /// Opens the port at 57600 baud, no parity, 8 data bits, 1 stop bit. Returns why that failed.
    [[nodiscard]] std::optional<std::string> OpenPort(std::int16_t commPortNumber);

    /// Asks the board for its identification and lets the running period of the time-out timer pass
    /// to its end. Exactly 10 bytes then waiting make ProgrammerFound true and go to ReplyBytes;
    /// anything else stays at the port.
    void IdentifyProgrammer();

    /// The same without letting the period pass to its end: the wait is over as soon as 10 bytes
    /// are there and none has followed them for one period of `silence`, 1000 ms after the request,
    /// or once `givenUp` says so. Takes over the tick of `silence` while it lasts.
    void IdentifyProgrammerAtOnce(WindowTimer& silence, const std::function<bool()>& givenUp);

    /// Waits until ExpectedReplyLength bytes are waiting at the port or, 1000 ms after the wait
    /// began, ReplyTimedOut is set. Never takes a byte.
    void WaitForReply();

    /// Sends a command letter; no reply is awaited.
    void SendCommand(std::uint8_t letter);

    /// Reads one block of 8 words. True: ReplyBytes holds the reply, 17 bytes or more. False: it
    /// timed out and ReplyBytes is as it was.
    [[nodiscard]] bool RequestBlock(BlockAddress address);

    /// Writes one block inside a write sequence; `count` is the number of words that the board is
    /// to take. True: ReplyBytes holds the acknowledgement, 3 bytes or more, status in byte 1.
    [[nodiscard]] bool WriteBlock(BlockAddress address, std::uint8_t count,
                                  std::span<const std::uint8_t, 16> data);

    const LinkState& State() const { return state_; }

  private:
    void totmr_Timer();
    void TakeIdentification();
    bool TakeReply(std::int16_t expectedLength);

    LinkState& state_;
    SerialControl& cm_;
    WindowTimer& totmr_;
    EventDelivery& events_;
};

}  // namespace Tamber
