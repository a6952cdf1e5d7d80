#include "simulator/Faults.hpp"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <utility>

namespace Tamber::Simulator {
namespace {

constexpr std::uint8_t Filler = 0xEE;

}  // namespace

FaultyBoard::FaultyBoard(FramedBoard& inner, BoardClock clock, FaultPlan plan, BoardTrace trace)
    : FramedBoard(std::move(clock), std::move(trace)),
      inner_(inner),
      plan_(std::move(plan)),
      random_(plan_.Seed) {}

bool FaultyBoard::Counts(const Frame& frame) const {
    const auto named = [&](char letter) { return frame.IsCommand(letter); };
    return frame.IsRequest() ||
           (plan_.CountErases && std::ranges::any_of(std::string_view("EFGH"), named));
}

void FaultyBoard::Obey(const Frame& frame) {
    const bool request = Counts(frame);
    if (request && !pauseOver_ && plan_.Unread && plan_.Unread->Request == requests_ + 1) {
        pauseOver_ = true;
        unreadUntil_ = Now() + plan_.Unread->Time;
    }
    if (!Reads())
        unread_.push_back(frame);
    else if (request)
        ObeyRequest(frame);
    else if (dead_)
        Withhold(frame);
    else
        inner_.Obey(frame);
}

std::optional<std::chrono::microseconds> FaultyBoard::NextDue() const {
    const auto due = FramedBoard::NextDue();
    return unread_.empty() ? due : std::min(due.value_or(unreadUntil_), unreadUntil_);
}

void FaultyBoard::Take(std::vector<std::uint8_t>& bytes) {
    if (Reads())
        for (const Frame& frame : std::exchange(unread_, {}))
            Obey(frame);
    FramedBoard::Take(bytes);
}

void FaultyBoard::ObeyRequest(const Frame& frame) {
    ++requests_;
    const bool leaves = requests_ == plan_.HangUpAtRequest;
    dead_ = dead_ || requests_ == plan_.SilentFrom;
    if (!leaves && !dead_)
        return Respond(frame);
    Withhold(frame);
    Trace('!', {}, leaves ? "fault, hung up" : "fault, no answer");
    if (leaves)
        Leave();
}

void FaultyBoard::Respond(const Frame& frame) {
    const bool refused =
        frame.IsWriteData() && plan_.RefusedWrite && plan_.RefusedWrite->Block == frame.Address();
    const bool damaged = requests_ == plan_.DamagedRequest;
    if (refused)
        Withhold(frame);
    const Bytes sound = refused   ? Bytes{3, 1, plan_.RefusedWrite->LowByte}
                        : damaged ? ReplyToDamaged(frame)
                                  : ReplyOf(frame);
    Bytes reply = requests_ == plan_.RepeatedReply ? previous_ : sound;
    previous_ = sound;
    Spoil(reply, frame.IsCommand('T'));
    std::string gloss = CutReply(reply);
    std::chrono::milliseconds delay{};
    if (plan_.Delay && plan_.Delay->Request.value_or(requests_) == requests_)
        delay = plan_.Delay->Time;
    if (delay.count() > 0)
        gloss += ", " + std::to_string(delay.count()) + " ms late";
    if (refused || damaged || reply != sound || delay.count() > 0)
        Trace('!', reply, gloss, delay);
    Answer(std::move(reply), delay);
    AddLater();
}

void FaultyBoard::Withhold(const Frame& frame) const {
    Trace('>', frame.Bytes, "kept from the board by a fault");
}

FaultyBoard::Bytes FaultyBoard::ReplyOf(const Frame& frame) {
    inner_.Obey(frame);
    Bytes reply;
    inner_.Take(reply);
    return reply;
}

// The trace has what the board got in front of what the host sent, whose answer follows.
FaultyBoard::Bytes FaultyBoard::ReplyToDamaged(const Frame& frame) {
    Frame damaged = frame;
    const std::size_t bit = Draw(8 * frame.Bytes.size());
    damaged.Bytes[bit / 8] ^= static_cast<std::uint8_t>(1 << bit % 8);
    damaged.Dropped = bit / 8 == 0;
    Bytes reply = ReplyOf(damaged);
    Trace('>', frame.Bytes, "damaged on its way to the board");
    return reply;
}

// Cuts a reply in the middle of which the board leaves or resets; returns the gloss.
std::string FaultyBoard::CutReply(Bytes& reply) {
    const bool leaves = requests_ == plan_.HangUpInReply;
    const bool resets = requests_ == plan_.ResetInReply;
    if (!leaves && !resets)
        return "fault, in place of the reply";
    reply.resize(reply.size() / 2);
    if (resets)
        inner_.Reset();
    if (leaves)
        Leave();
    return leaves ? "fault, hung up after these" : "fault, reset after these";
}

void FaultyBoard::Spoil(Bytes& reply, bool identification) {
    if (plan_.IdentificationLength && identification)
        reply.resize(*plan_.IdentificationLength, Filler);
    if (plan_.ReplyLength && plan_.ReplyLength->Request == requests_)
        reply.resize(plan_.ReplyLength->Length, Filler);
    FlipBits(reply);
    const auto& altered = plan_.AlteredByte;
    if (altered && altered->Request == requests_ && altered->Index < reply.size())
        reply[altered->Index] = altered->Value;
    AddExtra(reply);
}

void FaultyBoard::FlipBits(Bytes& reply) {
    if (requests_ == plan_.FlippedCount && !reply.empty())
        reply.front() ^= static_cast<std::uint8_t>(1 << Draw(8));
    if (!plan_.FlippedData || plan_.FlippedData->Request != requests_ || reply.empty())
        return;
    std::vector<std::size_t> bits(8 * (reply.size() - 1));
    std::iota(bits.begin(), bits.end(), 8);
    for (std::size_t left = plan_.FlippedData->Bits; left > 0 && !bits.empty(); --left) {
        std::swap(bits[Draw(bits.size())], bits.back());
        reply[bits.back() / 8] ^= static_cast<std::uint8_t>(1 << bits.back() % 8);
        bits.pop_back();
    }
}

void FaultyBoard::AddExtra(Bytes& reply) const {
    for (const auto& [request, count, where, time] : plan_.Extra) {
        if (request != requests_ || where == FaultPlan::Place::Later)
            continue;
        const std::size_t at = where == FaultPlan::Place::Front    ? 0
                               : where == FaultPlan::Place::Inside ? reply.size() / 2
                                                                   : reply.size();
        reply.insert(reply.begin() + static_cast<std::ptrdiff_t>(at), count, Filler);
    }
}

void FaultyBoard::AddLater() {
    for (const auto& [request, count, where, time] : plan_.Extra)
        if (request == requests_ && where == FaultPlan::Place::Later) {
            const Bytes bytes(count, Filler);
            Trace('<', bytes, "nobody asked for these", time);
            Interject(bytes, time);
        }
}

std::size_t FaultyBoard::Draw(std::size_t count) {
    return random_() % count;
}

}  // namespace Tamber::Simulator
