#include "simulator/BoardEngine.hpp"

#include <algorithm>
#include <utility>

#include "simulator/HexText.hpp"

namespace Tamber::Simulator {

BoardEngine::BoardEngine(BoardClock clock, const DeviceShape& shape, Identification identification,
                         BoardTrace trace)
    : clock_(std::move(clock)),
      memory_(shape),
      identification_(std::move(identification)),
      trace_(std::move(trace)),
      toldType_(shape.typeCode) {
    identification_.name.resize(5, ' ');
}

void BoardEngine::Receive(std::span<const std::uint8_t> bytes) {
    for (const auto& frame : reader_.Feed(bytes, clock_()))
        Obey(frame);
}

std::optional<std::chrono::microseconds> BoardEngine::NextDue() const {
    if (replies_.empty())
        return std::nullopt;
    return replyTime_;
}

void BoardEngine::Take(std::vector<std::uint8_t>& bytes) {
    bytes.insert(bytes.end(), replies_.begin(), replies_.end());
    replies_.clear();
}

// A host that waits for an answer gives up after a second and begins anew.
bool BoardEngine::Abandoned() const {
    return clock_() - lastFrame_ >= std::chrono::seconds(1);
}

void BoardEngine::Obey(const Frame& frame) {
    // Only the very next frame can be the address of a read.
    const bool addressExpected = std::exchange(readOpen_, frame.IsCommand('R'));
    if (frame.IsCommand())
        ObeyCommand(frame);
    else if (frame.IsReadAddress() && addressExpected)
        ReadBlock(frame);
    else if (frame.IsWriteData())
        WriteBlock(frame);
    else if (frame.dropped)
        Trace('>', frame.bytes, "dropped, the rest did not follow");
    else if (frame.IsReadAddress())
        Trace('>', frame.bytes, "ignored, an address with no read before it");
    else
        Trace('>', frame.bytes, "ignored, no frame has this length");
    lastFrame_ = clock_();
}

void BoardEngine::ObeyCommand(const Frame& frame) {
    const auto letter = static_cast<char>(frame.bytes[1]);
    Trace('>', frame.bytes, Carry(letter));
    if (letter == 'T')
        Identify();
}

std::string BoardEngine::Carry(char letter) {
    switch (letter) {
        case 'T':
            return "identify";
        case 'R':
            return "read";
        case 'W':
            writeOpen_ = !writeOpen_ || Abandoned();
            return writeOpen_ ? "write sequence opens" : "write sequence closes";
        case 'I':
            writeOpen_ = false;
            return "end";
        case 'E':
            memory_.EraseProgram();
            return "erase program memory";
        case 'F':
            memory_.EraseEeprom();
            return "erase EEPROM";
        case 'G':
            memory_.EraseIds();
            return "erase ID locations";
        case 'H':
            memory_.EraseConfiguration();
            return "erase configuration word";
        default:
            break;
    }
    if (letter < 'a' || letter > 'z')
        return "ignored, no command has this letter";
    toldType_ = letter - 'a' + 1;
    writeOpen_ = false;
    return "device type " + std::to_string(toldType_);
}

void BoardEngine::Identify() {
    const auto& name = identification_.name;
    std::vector<std::uint8_t> reply{10};
    reply.insert(reply.end(), name.begin(), name.end());
    reply.insert(reply.end(), {' ', ' ', static_cast<std::uint8_t>(identification_.major),
                               static_cast<std::uint8_t>(identification_.minor)});
    Reply(reply, name + ' ' + identification_.major + '.' + identification_.minor);
}

// The stream of a device as large as the address range allows ends where the ID block begins.
bool BoardEngine::ReadsStream(std::uint16_t address) const {
    const int streamEnd = 2 * memory_.Shape().programWords + 16;
    return toldType_ == 1 && (address < 0x4000 || address < streamEnd);
}

void BoardEngine::ReadBlock(const Frame& frame) {
    const auto address = frame.Address();
    const bool stream = ReadsStream(address);
    const auto gloss = (stream ? "stream block at " : "block at ") + WordText(address);
    Trace('>', frame.bytes, gloss);
    const auto block = stream ? memory_.StreamBlock(address) : memory_.Block(address);
    std::array<std::uint8_t, 17> reply{17};
    std::copy(block.begin(), block.end(), reply.begin() + 1);
    Reply(reply, gloss);
}

std::optional<std::uint16_t> BoardEngine::Store(const Frame& frame) {
    const std::size_t words = frame.bytes[4];
    if (!writeOpen_ || words > 8)
        return frame.Address();
    const auto failed =
        memory_.Write(frame.Address(), std::span(frame.bytes).subspan(5, 2 * words));
    if (!failed)
        return std::nullopt;
    return static_cast<std::uint16_t>(*failed);
}

void BoardEngine::WriteBlock(const Frame& frame) {
    Trace('>', frame.bytes,
          "write " + std::to_string(frame.bytes[4]) + " words at " + WordText(frame.Address()) +
              (writeOpen_ ? "" : " outside a write sequence"));
    const auto failed = Store(frame);
    const auto low = static_cast<std::uint8_t>(failed.value_or(0) & 0xFF);
    const std::array<std::uint8_t, 3> reply{3, static_cast<std::uint8_t>(failed ? 1 : 0), low};
    Reply(reply, failed ? "refused at " + WordText(*failed) : "written");
}

void BoardEngine::Reply(std::span<const std::uint8_t> bytes, const std::string& gloss) {
    if (replies_.empty())
        replyTime_ = clock_();
    replies_.insert(replies_.end(), bytes.begin(), bytes.end());
    Trace('<', bytes, gloss);
}

void BoardEngine::Trace(char mark, std::span<const std::uint8_t> bytes,
                        const std::string& gloss) const {
    if (trace_)
        trace_(TraceLine(clock_(), mark, bytes, gloss));
}

}  // namespace Tamber::Simulator
