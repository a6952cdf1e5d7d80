#pragma once

#include <random>

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

    enum class Place { Front, Inside, After, Later };
    struct ExtraFault {
        int Request = 0;
        std::size_t Count = 0;
        Place Where = Place::Front;
        std::chrono::milliseconds Time{};  ///< after the request; for Later
    };
    struct FlipFault {
        int Request = 0;
        std::size_t Bits = 0;
    };
    struct PauseFault {
        int Request = 0;
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
    /// Bytes 0xEE that nobody asked for come in front of a reply, in its middle, behind it, or
    /// later, without delaying what follows.
    std::vector<ExtraFault> Extra;
    /// So many different bits of a reply, drawn by Seed, are turned; the count byte has none of
    /// them.
    std::optional<FlipFault> FlippedData;
    /// One bit of the reply's count byte, drawn by Seed, is turned.
    std::optional<int> FlippedCount;
    /// The reply is the one of the request before again; the first one has none.
    std::optional<int> RepeatedReply;
    /// One bit of the request, drawn by Seed, is turned on its way to the board. In the count byte:
    /// the board drops the frame.
    std::optional<int> DamagedRequest;
    /// The board resets when half of this request's reply (rounded down) has been sent.
    std::optional<int> ResetInReply;
    /// The board does not read its line for so long, from this request on; what has come meanwhile
    /// it then obeys.
    std::optional<PauseFault> Unread;
    std::uint32_t Seed = 1;
    /// Erase commands count as requests as well, with replies of no bytes.
    bool CountErases = false;
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
    std::optional<std::chrono::microseconds> NextDue() const override;
    void Take(std::vector<std::uint8_t>& bytes) override;
    bool Reads() const override { return Now() >= unreadUntil_; }

  private:
    using Bytes = std::vector<std::uint8_t>;

    bool Counts(const Frame& frame) const;
    void ObeyRequest(const Frame& frame);
    void Respond(const Frame& frame);
    Bytes ReplyToDamaged(const Frame& frame);
    std::string CutReply(Bytes& reply);
    void AddLater();
    void FlipBits(Bytes& reply);
    void AddExtra(Bytes& reply) const;
    std::size_t Draw(std::size_t count);
    void Withhold(const Frame& frame) const;
    Bytes ReplyOf(const Frame& frame);
    void Spoil(Bytes& reply, bool identification);

    FramedBoard& inner_;
    FaultPlan plan_;
    int requests_ = 0;
    bool dead_ = false;
    std::mt19937 random_;
    Bytes previous_;  // the sound reply to the request before
    std::chrono::microseconds unreadUntil_{};
    bool pauseOver_ = false;  // the pause has begun, at least
    std::vector<Frame> unread_;
};

}  // namespace Tamber::Simulator
