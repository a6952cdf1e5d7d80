#include "link/ProgrammerLink.hpp"

#include <algorithm>
#include <chrono>

namespace Tamber {
namespace {

using namespace std::chrono_literals;

constexpr std::uint8_t StatusWritten = 0x00;

}  // namespace

ProgrammerLink::ProgrammerLink(LinkState& state, SerialControl& cm, WindowTimer& totmr,
                               EventDelivery& events)
    : state_(state), cm_(cm), totmr_(totmr), events_(events) {
    totmr_.OnTick([this] { totmr_Timer(); });
    totmr_.SetInterval(1000ms);
    totmr_.Enable();
}

// After the program was stopped, or the machine slept, the tick may be due together with a reply
// that came in time.
void ProgrammerLink::totmr_Timer() {
    cm_.TakeIn();
    ReplyTimedOut = !awaitingReply_ || cm_.InBufferCount() < ExpectedReplyLength;
    totmr_.Disable();
}

tl::expected<void, std::string> ProgrammerLink::OpenPort(const std::filesystem::path& path) {
    return cm_.PortOpen(path);
}

void ProgrammerLink::IdentifyProgrammer() {
    SendCommand(CommandIdentify);
    totmr_.Enable();
    ReplyTimedOut = false;
    DeliverEventsUntil(events_, [this] { return ReplyTimedOut; });
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
    ReplyTimedOut = false;
    DeliverEventsUntil(events_, [&] {
        if (const int count = cm_.InBufferCount(); count != came) {
            came = count;
            silent = false;
            silence.Disable();
            if (came >= IdentificationLength)
                silence.Enable();
        }
        return silent || ReplyTimedOut || givenUp();
    });
    silence.Disable();
    silence.OnTick({});
    totmr_.Disable();
    TakeIdentification();
}

void ProgrammerLink::TakeIdentification() {
    state_.ProgrammerFound = cm_.InBufferCount() == IdentificationLength;
    if (!state_.ProgrammerFound)
        return;
    cm_.Input(ReplyBytes);
    state_.Board = IdentityOf(ReplyBytes);
}

void ProgrammerLink::WaitForReply() {
    totmr_.SetInterval(1000ms);
    ReplyTimedOut = false;
    totmr_.Enable();
    awaitingReply_ = true;
    DeliverEventsUntil(
        events_, [this] { return cm_.InBufferCount() >= ExpectedReplyLength || ReplyTimedOut; });
    awaitingReply_ = false;
    // With more bytes than expected the timer runs on: its tick comes after the caller has looked
    // at ReplyTimedOut, and the next wait clears it.
    if (cm_.InBufferCount() == ExpectedReplyLength)
        totmr_.Disable();
}

void ProgrammerLink::Send(std::span<const std::uint8_t> frame) {
    FindLeftOver();
    cm_.Output(frame);
}

void ProgrammerLink::SendCommand(std::uint8_t letter) {
    Send(CommandFrame(letter));
}

void ProgrammerLink::Find(const LineFinding& finding) {
    if (!finding_)
        finding_ = finding;
}

void ProgrammerLink::FindLeftOver() {
    if (const int waiting = cm_.InBufferCount(); waiting > 0)
        Find({waiting, {}});
}

void ProgrammerLink::WatchSilence(WindowTimer& silence, const std::function<bool()>& givenUp) {
    bool silent = false;
    silence.OnTick([&] {
        cm_.TakeIn();
        silent = true;
    });
    silence.Enable();
    DeliverEventsUntil(events_, [&] { return silent || cm_.InBufferCount() > 0 || givenUp(); });
    silence.Disable();
    silence.OnTick({});
    FindLeftOver();
}

void ProgrammerLink::EmptyLine() {
    cm_.TakeIn();
    cm_.Input(ReplyBytes);
}

bool ProgrammerLink::TakeReply(std::int16_t expectedLength) {
    ExpectedReplyLength = expectedLength;
    WaitForReply();
    if (ReplyTimedOut)
        return false;
    cm_.Input(ReplyBytes);
    if (const auto more = std::ssize(ReplyBytes) - expectedLength; more > 0)
        Find({static_cast<int>(more), {}});
    return std::ssize(ReplyBytes) >= expectedLength;
}

void ProgrammerLink::SelectDeviceType(std::int16_t typeCode) {
    if (state_.ProgrammerFound)
        SendCommand(TypeLetter(typeCode));
}

// A reply whose count promises more than came, or more than was asked for, counts as what came.
tl::expected<BlockReply, NoReply> ProgrammerLink::RequestBlock(int address) {
    SendCommand(CommandRead);
    Send(ReadAddressFrame(address));
    if (!TakeReply(ReadReplyLength))
        return tl::unexpected(NoReply());
    if (ReplyBytes[0] != ReadReplyLength)
        Find({0, ReplyBytes[0]});
    BlockReply reply;
    std::copy_n(ReplyBytes.begin() + 1, reply.Data.size(), reply.Data.begin());
    reply.Length = std::clamp(ReplyBytes[0] - 1, 0, BlockLength);
    return reply;
}

void ProgrammerLink::EndRead() {
    SendCommand(CommandEnd);
}

void ProgrammerLink::BeginWrite() {
    SendCommand(CommandWrite);
}

tl::expected<WriteReply, NoReply> ProgrammerLink::WriteBlock(
    int address, std::uint8_t count, std::span<const std::uint8_t, BlockLength> data) {
    Send(WriteDataFrame(address, count, data));
    if (!TakeReply(WriteReplyLength))
        return tl::unexpected(NoReply());
    return WriteReply{ReplyBytes[1] == StatusWritten, AddrHi(address) * 256 + ReplyBytes[2]};
}

void ProgrammerLink::EndWrite() {
    SendCommand(CommandWrite);
    SendCommand(CommandEnd);
}

}  // namespace Tamber
