#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <tl/expected.hpp>
#include <utility>
#include <vector>

#include "link/CommandFrame.hpp"
#include "link/LineFinding.hpp"
#include "link/LinkState.hpp"
#include "platform/EventDelivery.hpp"
#include "platform/SerialControl.hpp"
#include "platform/WindowTimer.hpp"

namespace Tamber {

/// A reply did not come, or not whole, within its second.
struct NoReply {};

/// A block as the board sent it.
struct BlockReply {
    std::array<std::uint8_t, BlockLength> Data{};  ///< eight words, low byte first; 0: did not come
    int Length = 0;  ///< of these bytes, how many the reply's own count says there are, 0..16
};

/// What the board says of a block that it was to write.
struct WriteReply {
    bool Written = false;
    int FailedAddress = 0;  ///< the byte address at which a block was refused
};

/// The exchanges with the board: every byte that goes out, and the wait for what comes back. Each
/// operation returns when its frames have been handed to the port and, where a reply is awaited,
/// the wait has ended. Input is never discarded: a byte that comes unasked counts into the next
/// reply. The board wants the device type first, then sequences: blocks read in ascending order and
/// EndRead, or BeginWrite, blocks written in ascending order and EndWrite. After a NoReply nothing
/// more is sent, so the sequence stays open.
class ProgrammerLink {
  public:
    /// Takes over the tick of `totmr` and starts it: the time-out timer runs from its making on.
    ProgrammerLink(LinkState& state, SerialControl& cm, WindowTimer& totmr, EventDelivery& events);

    /// Opens the port at `path`; the failure is text for the user.
    [[nodiscard]] tl::expected<void, std::string> OpenPort(const std::filesystem::path& path);

    /// Asks the board for its identification and lets the running period of the time-out timer pass
    /// to its end. Exactly 10 bytes then waiting make ProgrammerFound true; anything else stays at
    /// the port.
    void IdentifyProgrammer();

    /// The same without letting the period pass to its end: the wait is over as soon as 10 bytes
    /// are there and none has followed them for one period of `silence`, 1000 ms after the request,
    /// or once `givenUp` says so. Takes over the tick of `silence` while it lasts.
    void IdentifyProgrammerAtOnce(WindowTimer& silence, const std::function<bool()>& givenUp);

    /// Names the device type, 1..26, to the board. If the board was not found, nothing is sent.
    void SelectDeviceType(std::int16_t typeCode);

    /// Reads the eight words from byte address `address` on.
    [[nodiscard]] tl::expected<BlockReply, NoReply> RequestBlock(int address);
    void EndRead();

    void BeginWrite();
    /// Writes eight words from byte address `address` on; `count` is the number of words that the
    /// board is to take.
    [[nodiscard]] tl::expected<WriteReply, NoReply> WriteBlock(
        int address, std::uint8_t count, std::span<const std::uint8_t, BlockLength> data);
    void EndWrite();

    /// The board confirms no erase.
    void EraseProgramMemory() { SendCommand(CommandEraseProgram); }
    void EraseEeprom() { SendCommand(CommandEraseEeprom); }
    void EraseIdLocations() { SendCommand(CommandEraseIdLocations); }
    void EraseConfigurationWord() { SendCommand(CommandEraseConfiguration); }

    const LinkState& State() const { return state_; }

    /// The first finding since the last call.
    std::optional<LineFinding> TakeFinding() { return std::exchange(finding_, std::nullopt); }

    bool HasFinding() const { return finding_.has_value(); }

    /// Lets one period of `silence` pass, while nothing is asked for, or less once something has
    /// come, which counts among the findings, or `givenUp` says so. Takes over the tick of
    /// `silence` while it lasts.
    void WatchSilence(WindowTimer& silence, const std::function<bool()>& givenUp);

    /// Counts what waits at the port, while nothing is asked for, among the findings.
    void FindLeftOver();

    /// Takes what waits at the port and drops it.
    void EmptyLine();

  private:
    void totmr_Timer();
    void Send(std::span<const std::uint8_t> frame);
    void SendCommand(std::uint8_t letter);
    void Find(const LineFinding& finding);
    void TakeIdentification();

    // Waits until ExpectedReplyLength bytes are waiting at the port or, 1000 ms after the wait
    // began, ReplyTimedOut is set. Never takes a byte.
    void WaitForReply();

    // Waits for a reply and takes it, with whatever else is waiting, into ReplyBytes.
    [[nodiscard]] bool TakeReply(std::int16_t expectedLength);

    LinkState& state_;
    SerialControl& cm_;
    WindowTimer& totmr_;
    EventDelivery& events_;
    std::int16_t ExpectedReplyLength = 0;
    bool awaitingReply_ = false;
    bool ReplyTimedOut = false;            // set by the time-out tick, cleared as a wait begins
    std::vector<std::uint8_t> ReplyBytes;  // the last reply taken from the port
    std::optional<LineFinding> finding_;
};

}  // namespace Tamber
