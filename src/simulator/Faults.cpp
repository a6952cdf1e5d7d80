#include "simulator/Faults.hpp"

#include <utility>

namespace Tamber::Simulator {

FaultyBoard::FaultyBoard(FramedBoard& inner, BoardClock clock, FaultPlan plan, BoardTrace trace)
    : FramedBoard(std::move(clock), std::move(trace)), inner_(inner), plan_(plan) {}

void FaultyBoard::Obey(const Frame& frame) {
    if (frame.IsRequest())
        ObeyRequest(frame);
    else if (dead_)
        Withhold(frame);
    else
        inner_.Obey(frame);
}

void FaultyBoard::ObeyRequest(const Frame& frame) {
    ++requests_;
    const bool leaves = requests_ == plan_.HangUpAtRequest;
    dead_ = dead_ || requests_ == plan_.SilentFrom;
    if (leaves || dead_) {
        Withhold(frame);
        Trace('!', {}, leaves ? "fault, hung up" : "fault, no answer");
        if (leaves)
            Leave();
        return;
    }
    const bool refused =
        frame.IsWriteData() && plan_.RefusedWrite && plan_.RefusedWrite->Block == frame.Address();
    if (refused)
        Withhold(frame);
    const Bytes sound = refused ? Bytes{3, 1, plan_.RefusedWrite->LowByte} : ReplyOf(frame);
    Bytes reply = sound;
    Spoil(reply, frame.IsCommand('T'));
    std::string gloss = "fault, in place of the reply";
    if (requests_ == plan_.HangUpInReply) {
        reply.resize(reply.size() / 2);
        gloss = "fault, hung up after these";
        Leave();
    }
    std::chrono::milliseconds delay{};
    if (plan_.Delay && plan_.Delay->Request.value_or(requests_) == requests_)
        delay = plan_.Delay->Time;
    if (delay.count() > 0)
        gloss += ", " + std::to_string(delay.count()) + " ms late";
    if (refused || reply != sound || delay.count() > 0)
        Trace('!', reply, gloss, delay);
    Answer(std::move(reply), delay);
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

void FaultyBoard::Spoil(Bytes& reply, bool identification) const {
    constexpr std::uint8_t filler = 0xEE;
    if (plan_.IdentificationLength && identification)
        reply.resize(*plan_.IdentificationLength, filler);
    if (plan_.ReplyLength && plan_.ReplyLength->Request == requests_)
        reply.resize(plan_.ReplyLength->Length, filler);
    const auto& altered = plan_.AlteredByte;
    if (altered && altered->Request == requests_ && altered->Index < reply.size())
        reply[altered->Index] = altered->Value;
}

}  // namespace Tamber::Simulator
