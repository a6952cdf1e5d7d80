#include "cli/TracedSerialControl.hpp"

#include <utility>

#include "core/HexText.hpp"
#include "link/CommandFrame.hpp"
#include "simulator/BoardTrace.hpp"

namespace Tamber::Cli {
namespace {

constexpr std::size_t CommandLength = CommandFrame(0).size();
constexpr std::size_t ReadAddressLength = ReadAddressFrame(0).size();

std::string CommandGloss(std::uint8_t letter) {
    switch (letter) {
        case CommandIdentify:
            return "identify";
        case CommandRead:
            return "read";
        case CommandWrite:
            return "write sequence opens or closes";
        case CommandEnd:
            return "end";
        case CommandEraseProgram:
            return "erase program memory";
        case CommandEraseEeprom:
            return "erase EEPROM";
        case CommandEraseIdLocations:
            return "erase ID locations";
        case CommandEraseConfiguration:
            return "erase configuration word";
        default:
            return "device type " + std::to_string(letter - TypeLetter(1) + 1);
    }
}

std::string FrameGloss(std::span<const std::uint8_t> frame) {
    if (frame.size() == CommandLength)
        return CommandGloss(frame[1]);
    const std::string address = HexByte(frame[1]) + HexByte(frame[2]);
    if (frame.size() == ReadAddressLength)
        return "block at " + address;
    return "write " + std::to_string(frame[4]) + " words at " + address;
}

}  // namespace

TracedSerialControl::TracedSerialControl(std::unique_ptr<SerialControl> port, Clock clock,
                                         LineSink sink)
    : port_(std::move(port)), clock_(std::move(clock)), sink_(std::move(sink)) {}

TracedSerialControl::~TracedSerialControl() {
    Collect();
    WriteReply();
    if (port_->PortLost())
        sink_(Simulator::TraceLine(clock_(), '!', {}, "hung up, the port went away"));
}

tl::expected<void, std::string> TracedSerialControl::PortOpen(const std::filesystem::path& path) {
    return port_->PortOpen(path);
}

void TracedSerialControl::Output(std::span<const std::uint8_t> bytes) {
    Collect();
    WriteReply();
    sink_(Simulator::TraceLine(clock_(), '>', bytes, FrameGloss(bytes)));
    port_->Output(bytes);
}

int TracedSerialControl::InBufferCount() {
    Collect();
    return static_cast<int>(waiting_.size());
}

void TracedSerialControl::Input(std::vector<std::uint8_t>& bytes) {
    Collect();
    WriteReply();
    bytes = std::exchange(waiting_, {});
    written_ = 0;
}

void TracedSerialControl::Collect() {
    if (port_->InBufferCount() == 0)
        return;
    std::vector<std::uint8_t> bytes;
    port_->Input(bytes);
    waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
    lastArrival_ = clock_();
}

void TracedSerialControl::WriteReply() {
    const auto fresh = std::span(waiting_).subspan(written_);
    if (!fresh.empty())
        sink_(Simulator::TraceLine(lastArrival_, '<', fresh, "answer"));
    written_ = waiting_.size();
}

}  // namespace Tamber::Cli
