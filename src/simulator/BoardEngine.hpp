#pragma once

#include <optional>
#include <string>

#include "simulator/BoardLine.hpp"
#include "simulator/BoardTrace.hpp"
#include "simulator/DeviceMemory.hpp"
#include "simulator/Frame.hpp"

namespace Tamber::Simulator {

/// How the board answers when it is asked who it is.
struct Identification {
    /// The first five characters are sent; a shorter name is filled up with spaces.
    std::string name = "TAMBR";
    char major = '1';
    char minor = '0';
};

/// The board's side of the protocol. It answers at once; it sends nothing unasked, and nothing in
/// answer to a command frame other than "T". Frames it cannot make sense of are traced and ignored.
///
/// Only identification, block reads and block writes are answered:
/// - "T": 10, the five characters, two spaces, the two version characters;
/// - "R" and, as the next frame, an address: 17, then the 16 bytes of the block;
/// - a block to write: 3, then 0 and 0 when it was stored, or 1 and the low byte of the address at
///   which it failed. Words in front of that address are stored. Outside a write sequence nothing
///   is stored and the failing address is the block's own; the same for a word count above 8.
///
/// "W" opens a write sequence when none is open, or when the one that is has been silent for a
/// second, and closes it otherwise; "I" and a type letter end
/// whatever is open.
class BoardEngine : public BoardLine {
  public:
    BoardEngine(BoardClock clock, const DeviceShape& shape, Identification identification = {},
                BoardTrace trace = {});

    void Receive(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::optional<std::chrono::microseconds> NextDue() const override;
    void Take(std::vector<std::uint8_t>& bytes) override;
    [[nodiscard]] bool HungUp() const override { return false; }

    /// The device in the socket, to look into and to change between requests.
    [[nodiscard]] DeviceMemory& Memory() { return memory_; }
    [[nodiscard]] const DeviceMemory& Memory() const { return memory_; }

    /// The device type the host told last, 1 for "a"; the socket's own before it has told any. It
    /// decides whether program memory is read as the type 1 stream.
    [[nodiscard]] int ToldType() const { return toldType_; }

    [[nodiscard]] bool WriteSequenceOpen() const { return writeOpen_; }

  private:
    [[nodiscard]] bool Abandoned() const;
    void Obey(const Frame& frame);
    void ObeyCommand(const Frame& frame);
    [[nodiscard]] std::string Carry(char letter);
    void Identify();
    void ReadBlock(const Frame& frame);
    void WriteBlock(const Frame& frame);
    [[nodiscard]] std::optional<std::uint16_t> Store(const Frame& frame);
    [[nodiscard]] bool ReadsStream(std::uint16_t address) const;
    void Reply(std::span<const std::uint8_t> bytes, const std::string& gloss);
    void Trace(char mark, std::span<const std::uint8_t> bytes, const std::string& gloss) const;

    BoardClock clock_;
    DeviceMemory memory_;
    Identification identification_;
    BoardTrace trace_;
    FrameReader reader_;
    std::vector<std::uint8_t> replies_;
    std::chrono::microseconds replyTime_{};
    std::chrono::microseconds lastFrame_{};
    int toldType_;
    bool readOpen_ = false;
    bool writeOpen_ = false;
};

}  // namespace Tamber::Simulator
