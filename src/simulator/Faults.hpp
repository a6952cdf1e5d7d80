#pragma once

#include "simulator/FramedBoard.hpp"

namespace Tamber::Simulator {

/// What goes wrong, and when. Requests are the frames that are answered (identification, block
/// read, block write), counted from 1 as they complete. Whatever is not set behaves well; faults
/// add up.
struct FaultPlan {
    struct LengthFault {
        int Request = 0;
        std::size_t Length = 0;
    };
    struct ByteFault {
        int Request = 0;
        std::size_t Index = 0;
        std::uint8_t Value = 0;
    };
    struct WriteFault {
        std::uint16_t Block = 0;
        std::uint8_t LowByte = 0;
    };
    struct DelayFault {
        std::optional<int> Request;  ///< not set: every reply is delayed
        std::chrono::milliseconds Time{};
    };

    /// The board is dead from this request on: it neither answers nor carries out anything.
    std::optional<int> SilentFrom;
    /// The reply is cut to this many bytes, or filled up to them with 0xEE; 0: carried out but
    /// unanswered.
    std::optional<LengthFault> ReplyLength;
    /// One byte of a reply (index from 0) has another value; beyond the reply: nothing happens.
    std::optional<ByteFault> AlteredByte;
    /// Every write of the block at this byte address is refused with this low byte; nothing of it
    /// is stored.
    std::optional<WriteFault> RefusedWrite;
    /// Every identification has this many bytes, as with ReplyLength.
    std::optional<std::size_t> IdentificationLength;
    /// Replies come this much later; what follows waits for them.
    std::optional<DelayFault> Delay;
    /// The board goes from the line when this request is complete, in place of carrying it out.
    std::optional<int> HangUpAtRequest;
    /// The board goes from the line when half of this request's reply (rounded down) has been sent.
    std::optional<int> HangUpInReply;
};

/// A board with faults. It passes whole frames on. Put a PacedLine outside it, not inside.
class FaultyBoard : public FramedBoard {
  public:
    /// `inner` must outlive this one, go by the same clock and answer every request at once. The
    /// trace gets a `!` line for whatever differs from the trace of the board within, and a `>`
    /// line for a frame that is kept from it.
    FaultyBoard(FramedBoard& inner, BoardClock clock, FaultPlan plan, BoardTrace trace = {});

    void Obey(const Frame& frame) override;

  private:
    using Bytes = std::vector<std::uint8_t>;

    void ObeyRequest(const Frame& frame);
    void Withhold(const Frame& frame) const;
    Bytes ReplyOf(const Frame& frame);
    void Spoil(Bytes& reply, bool identification) const;

    FramedBoard& inner_;
    FaultPlan plan_;
    int requests_ = 0;
    bool dead_ = false;
};

}  // namespace Tamber::Simulator
