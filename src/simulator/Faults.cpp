#include "simulator/Faults.hpp"

#include <utility>

#include "simulator/HexText.hpp"

namespace Tamber::Simulator {

namespace {

std::string Gloss(bool leaving, std::chrono::milliseconds delay) {
    const std::string late =
        delay.count() > 0 ? ", " + std::to_string(delay.count()) + " ms late" : "";
    return (leaving ? "fault, hung up after these" : "fault, in place of the reply") + late;
}

}  // namespace

bool FaultPlan::Empty() const {
    return !silentFrom && !replyLength && !alteredByte && !refusedWrite && !identificationLength &&
           !delay && !hangUpAtRequest && !hangUpInReply;
}

FaultyBoard::FaultyBoard(BoardLine& inner, BoardClock clock, FaultPlan plan, BoardTrace trace)
    : inner_(inner), clock_(std::move(clock)), plan_(plan), trace_(std::move(trace)) {}

void FaultyBoard::Receive(std::span<const std::uint8_t> bytes) {
    for (const auto& frame : reader_.Feed(bytes, clock_()))
        Handle(frame);
}

std::optional<std::chrono::microseconds> FaultyBoard::NextDue() const {
    if (!toHost_.empty())
        return toHost_.front().due;
    return leaving_ ? std::nullopt : inner_.NextDue();
}

void FaultyBoard::Take(std::vector<std::uint8_t>& bytes) {
    Fetch();
    const auto now = clock_();
    for (; !toHost_.empty() && toHost_.front().due <= now; toHost_.pop_front())
        bytes.push_back(toHost_.front().value);
}

bool FaultyBoard::HungUp() const {
    return (leaving_ && toHost_.empty()) || inner_.HungUp();
}

// 0 for a frame that is not answered.
std::size_t FaultyBoard::ReplyLengthOf(const Frame& frame) {
    const bool addressExpected = std::exchange(readOpen_, frame.IsCommand('R'));
    if (frame.IsCommand('T'))
        return 10;
    if (frame.IsReadAddress() && addressExpected)
        return 17;
    return frame.IsWriteData() ? 3 : 0;
}

void FaultyBoard::Handle(const Frame& frame) {
    const auto replyLength = ReplyLengthOf(frame);
    if (leaving_)
        return;
    if (frame.dropped)
        Trace('>', frame.bytes, "dropped, the rest did not follow");
    else if (replyLength > 0)
        HandleRequest(frame, replyLength);
    else if (dead_)
        Trace('>', frame.bytes, "kept from the board by a fault");
    else
        inner_.Receive(frame.bytes);
}

void FaultyBoard::HandleRequest(const Frame& frame, std::size_t replyLength) {
    ++requests_;
    if (Withholds(frame))
        return;
    awaited_.push_back({requests_, frame.IsCommand('T'), replyLength, false, {}});
    const auto& refused = plan_.refusedWrite;
    if (frame.IsWriteData() && refused && refused->block == frame.Address()) {
        Trace('>', frame.bytes, "kept from the board by a fault");
        awaited_.back().ownReply = true;
        awaited_.back().reply = {3, 1, refused->lowByte};
    } else {
        inner_.Receive(frame.bytes);
    }
    Fetch();
}

// Death and hang-up: from here on nothing reaches the board.
bool FaultyBoard::Withholds(const Frame& frame) {
    leaving_ = plan_.hangUpAtRequest && requests_ >= *plan_.hangUpAtRequest;
    dead_ = plan_.silentFrom && requests_ >= *plan_.silentFrom;
    if (!leaving_ && !dead_)
        return false;
    Trace('>', frame.bytes, "kept from the board by a fault");
    Trace('!', {}, leaving_ ? "fault, hung up" : "fault, no answer");
    return true;
}

void FaultyBoard::Fetch() {
    std::vector<std::uint8_t> replies;
    inner_.Take(replies);
    auto next = replies.begin();
    while (!awaited_.empty() && !leaving_) {
        auto& reply = awaited_.front().reply;
        for (; next != replies.end() && reply.size() < awaited_.front().length; ++next)
            reply.push_back(*next);
        if (reply.size() < awaited_.front().length)
            return;
        Release(std::move(awaited_.front()));
        awaited_.pop_front();
    }
}

void FaultyBoard::Release(Awaited awaited) {
    const auto before = awaited.reply;
    Spoil(awaited);
    leaving_ = plan_.hangUpInReply == awaited.request;
    if (leaving_)
        awaited.reply.resize(awaited.reply.size() / 2);
    const auto delay = DelayOf(awaited.request);
    const auto due = clock_() + delay;
    for (const auto byte : awaited.reply)
        toHost_.push_back({due, byte});
    if (trace_ && (awaited.ownReply || awaited.reply != before || delay.count() > 0))
        trace_(TraceLine(due, '!', awaited.reply, Gloss(leaving_, delay)));
}

void FaultyBoard::Spoil(Awaited& awaited) const {
    constexpr std::uint8_t Filler = 0xEE;
    if (plan_.identificationLength && awaited.identification)
        awaited.reply.resize(*plan_.identificationLength, Filler);
    if (plan_.replyLength && plan_.replyLength->request == awaited.request)
        awaited.reply.resize(plan_.replyLength->length, Filler);
    const auto& altered = plan_.alteredByte;
    if (altered && altered->request == awaited.request && altered->index < awaited.reply.size())
        awaited.reply[altered->index] = altered->value;
}

std::chrono::milliseconds FaultyBoard::DelayOf(int request) const {
    const auto& delay = plan_.delay;
    const bool meant = delay && delay->request.value_or(request) == request;
    return meant ? delay->time : std::chrono::milliseconds{};
}

void FaultyBoard::Trace(char mark, std::span<const std::uint8_t> bytes,
                        const std::string& gloss) const {
    if (trace_)
        trace_(TraceLine(clock_(), mark, bytes, gloss));
}

}  // namespace Tamber::Simulator
