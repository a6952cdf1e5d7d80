#include "simulator/BoardEngine.hpp"

#include <utility>

#include "core/HexText.hpp"

namespace Tamber::Simulator {

BoardEngine::BoardEngine(BoardClock clock, const DeviceShape& shape, Identification identification,
                         BoardTrace trace)
    : FramedBoard(std::move(clock), std::move(trace)),
      memory_(shape),
      identification_(std::move(identification)),
      toldType_(shape.TypeCode) {
    identification_.Name.resize(5, ' ');
}

void BoardEngine::Obey(const Frame& frame) {
    if (frame.IsCommand()) {
        const auto letter = static_cast<char>(frame.Bytes[1]);
        Trace('>', frame.Bytes, CarryOut(letter));
        if (letter == 'T')
            Identify();
    } else if (frame.IsReadAddress() && frame.FollowsRead) {
        ReadBlock(frame);
    } else if (frame.IsWriteData()) {
        WriteBlock(frame);
    } else {
        Trace('>', frame.Bytes,
              frame.Dropped           ? "dropped, the rest did not follow"
              : frame.IsReadAddress() ? "ignored, an address with no read before it"
                                      : "ignored, no frame has this length");
    }
    lastFrame_ = Now();
}

void BoardEngine::Reset() {
    writeOpen_ = false;
    toldType_ = memory_.Shape().TypeCode;
}

std::string BoardEngine::CarryOut(char letter) {
    // A host that waits for an answer gives up after a second and begins anew.
    const bool abandoned = Now() - lastFrame_ >= std::chrono::seconds(1);
    switch (letter) {
        case 'T':
            return "identify";
        case 'R':
            return "read";
        case 'W':
            writeOpen_ = !writeOpen_ || abandoned;
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
    const auto& [name, major, minor] = identification_;
    std::vector<std::uint8_t> reply{10};
    for (const char character : name + "  " + major + minor)
        reply.push_back(static_cast<std::uint8_t>(character));
    Reply(std::move(reply), name + ' ' + major + '.' + minor);
}

// The stream of a device as large as the address range allows ends where the ID block begins.
bool BoardEngine::ReadsStream(std::uint16_t address) const {
    const int streamEnd = 2 * memory_.Shape().ProgramWords + 16;
    return toldType_ == 1 && (address < DeviceMemory::IdAddress || address < streamEnd);
}

void BoardEngine::ReadBlock(const Frame& frame) {
    const auto address = frame.Address();
    const bool stream = ReadsStream(address);
    const auto gloss = (stream ? "stream block at " : "block at ") + HexWord(address);
    Trace('>', frame.Bytes, gloss);
    const auto block = stream ? memory_.StreamBlock(address) : memory_.Block(address);
    std::vector<std::uint8_t> reply{17};
    reply.insert(reply.end(), block.begin(), block.end());
    Reply(std::move(reply), gloss);
}

tl::expected<void, std::uint32_t> BoardEngine::Store(const Frame& frame) {
    const std::size_t words = frame.Bytes[4];
    if (!writeOpen_ || words > 8)
        return tl::unexpected(std::uint32_t{frame.Address()});
    return memory_.Write(frame.Address(), std::span(frame.Bytes).subspan(5, 2 * words));
}

void BoardEngine::WriteBlock(const Frame& frame) {
    Trace('>', frame.Bytes,
          "write " + std::to_string(frame.Bytes[4]) + " words at " + HexWord(frame.Address()) +
              (writeOpen_ ? "" : " outside a write sequence"));
    if (const auto stored = Store(frame))
        Reply({3, 0, 0}, "written");
    else
        Reply({3, 1, static_cast<std::uint8_t>(stored.error() & 0xFF)},
              "refused at " + HexWord(stored.error() & 0xFFFF));
}

void BoardEngine::Reply(std::vector<std::uint8_t> bytes, const std::string& gloss) {
    Trace('<', bytes, gloss);
    Answer(std::move(bytes));
}

}  // namespace Tamber::Simulator
