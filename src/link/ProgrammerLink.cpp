#include "link/ProgrammerLink.hpp"

#include <chrono>

namespace Tamber {

using namespace std::chrono_literals;

ProgrammerLink::ProgrammerLink(LinkState& state, SerialControl& cm, WindowTimer& totmr,
                               EventDelivery& events)
    : state_(state), cm_(cm), totmr_(totmr), events_(events) {
    totmr_.OnTick([this] { totmr_Timer(); });
    totmr_.SetInterval(1000ms);
    totmr_.Enable();
}

void ProgrammerLink::totmr_Timer() {
    state_.ReplyTimedOut = true;
    totmr_.Disable();
}

std::optional<std::string> ProgrammerLink::OpenPort(std::int16_t commPortNumber) {
    return cm_.PortOpen(commPortNumber, "57600,N,8,1");
}

void ProgrammerLink::IdentifyProgrammer() {
    SendCommand(CommandIdentify);
    totmr_.Enable();
    state_.ReplyTimedOut = false;
    DeliverEventsUntil(events_, [this] { return state_.ReplyTimedOut; });
    TakeIdentification();
}

void ProgrammerLink::IdentifyProgrammerAtOnce(WindowTimer& silence,
                                              const std::function<bool()>& givenUp) {
    int came = 0;
    bool silent = false;
    silence.OnTick([&] {
        silent = true;
        silence.Disable();
    });
    SendCommand(CommandIdentify);
    totmr_.SetInterval(1000ms);
    totmr_.Enable();
    state_.ReplyTimedOut = false;
    DeliverEventsUntil(events_, [&] {
        if (const int count = cm_.InBufferCount(); count != came) {
            came = count;
            silent = false;
            silence.Disable();
            if (came >= IdentificationLength)
                silence.Enable();
        }
        return silent || state_.ReplyTimedOut || givenUp();
    });
    silence.Disable();
    silence.OnTick({});
    totmr_.Disable();
    TakeIdentification();
}

void ProgrammerLink::TakeIdentification() {
    state_.ProgrammerFound = cm_.InBufferCount() == IdentificationLength;
    if (state_.ProgrammerFound)
        cm_.Input(state_.ReplyBytes);
}

void ProgrammerLink::WaitForReply() {
    totmr_.SetInterval(1000ms);
    state_.ReplyTimedOut = false;
    totmr_.Enable();
    DeliverEventsUntil(events_, [this] {
        return cm_.InBufferCount() >= state_.ExpectedReplyLength || state_.ReplyTimedOut;
    });
    // With more bytes than expected the timer runs on: its tick comes after the caller has looked
    // at ReplyTimedOut, and the next wait clears it.
    if (cm_.InBufferCount() == state_.ExpectedReplyLength)
        totmr_.Disable();
}

void ProgrammerLink::SendCommand(std::uint8_t letter) {
    cm_.Output(CommandFrame(letter));
}

bool ProgrammerLink::TakeReply(std::int16_t expectedLength) {
    state_.ExpectedReplyLength = expectedLength;
    WaitForReply();
    if (state_.ReplyTimedOut)
        return false;
    cm_.Input(state_.ReplyBytes);
    return true;
}

bool ProgrammerLink::RequestBlock(BlockAddress address) {
    SendCommand(CommandRead);
    cm_.Output(ReadAddressFrame(address));
    return TakeReply(ReadReplyLength);
}

bool ProgrammerLink::WriteBlock(BlockAddress address, std::uint8_t count,
                                std::span<const std::uint8_t, 16> data) {
    cm_.Output(WriteDataFrame(address, count, data));
    return TakeReply(WriteReplyLength);
}

}  // namespace Tamber
