#pragma once

#include <deque>
#include <string>

#include "simulator/BoardLine.hpp"
#include "simulator/BoardTrace.hpp"
#include "simulator/Frame.hpp"

namespace Tamber::Simulator {

/// What goes wrong, and when. Requests are the ones that are answered (identification, block read,
/// block write), counted from 1 in the order in which they are complete. Whatever is not set
/// behaves well; faults add up.
struct FaultPlan {
    struct ReplyLength {
        int request = 0;
        std::size_t length = 0;
    };
    struct AlteredByte {
        int request = 0;
        std::size_t index = 0;
        std::uint8_t value = 0;
    };
    struct RefusedWrite {
        std::uint16_t block = 0;
        std::uint8_t lowByte = 0;
    };
    struct Delay {
        /// Not set: every reply is delayed.
        std::optional<int> request;
        std::chrono::milliseconds time{};
    };

    /// The board is dead from this request on: it neither answers nor carries out anything.
    std::optional<int> silentFrom;
    /// The reply is cut to this many bytes, or filled up to them with 0xEE; 0: carried out but
    /// unanswered.
    std::optional<ReplyLength> replyLength;
    /// One byte of a reply (index from 0) has another value; beyond the reply: nothing happens.
    std::optional<AlteredByte> alteredByte;
    /// Every write of the block at this byte address is refused with this low byte; nothing of it
    /// is stored.
    std::optional<RefusedWrite> refusedWrite;
    /// Every identification has this many bytes, as with replyLength.
    std::optional<std::size_t> identificationLength;
    /// Replies come this much later; what follows waits behind them.
    std::optional<Delay> delay;
    /// The board goes from the line when this request is complete, in place of carrying it out.
    std::optional<int> hangUpAtRequest;
    /// The board goes from the line when half of this request's reply (rounded down) has been sent.
    std::optional<int> hangUpInReply;

    /// No fault at all is planned.
    [[nodiscard]] bool Empty() const;
};

/// A board with faults. It passes whole frames on, so half a frame that is never finished does not
/// reach the board within. A reply goes on once it is whole: put a PacedLine outside, not inside.
class FaultyBoard : public BoardLine {
  public:
    /// `inner` must outlive this one, go by the same clock and answer every request. The trace gets
    /// a `!` line for whatever differs from the trace of the board within, and a `>` line for a
    /// frame that is kept from it.
    FaultyBoard(BoardLine& inner, BoardClock clock, FaultPlan plan, BoardTrace trace = {});

    void Receive(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::optional<std::chrono::microseconds> NextDue() const override;
    void Take(std::vector<std::uint8_t>& bytes) override;
    [[nodiscard]] bool HungUp() const override;

    /// Requests counted so far.
    [[nodiscard]] int Requests() const { return requests_; }

  private:
    struct Awaited {
        int request;
        bool identification;
        std::size_t length;
        bool ownReply;
        std::vector<std::uint8_t> reply;
    };
    struct TimedByte {
        std::chrono::microseconds due;
        std::uint8_t value;
    };

    void Handle(const Frame& frame);
    void HandleRequest(const Frame& frame, std::size_t replyLength);
    [[nodiscard]] std::size_t ReplyLengthOf(const Frame& frame);
    [[nodiscard]] bool Withholds(const Frame& frame);
    void Fetch();
    void Release(Awaited awaited);
    void Spoil(Awaited& awaited) const;
    [[nodiscard]] std::chrono::milliseconds DelayOf(int request) const;
    void Trace(char mark, std::span<const std::uint8_t> bytes, const std::string& gloss) const;

    BoardLine& inner_;
    BoardClock clock_;
    FaultPlan plan_;
    BoardTrace trace_;
    FrameReader reader_;
    std::deque<Awaited> awaited_;
    std::deque<TimedByte> toHost_;
    int requests_ = 0;
    bool readOpen_ = false;
    bool dead_ = false;
    bool leaving_ = false;
};

}  // namespace Tamber::Simulator
