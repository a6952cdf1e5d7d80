#pragma once

#include "simulator/DeviceMemory.hpp"
#include "simulator/FramedBoard.hpp"

namespace Tamber::Simulator {

/// How the board answers when it is asked who it is.
struct Identification {
    std::string Name = "TAMBR";  ///< sent as five characters, filled up with spaces
    char Major = '1';
    char Minor = '0';
};

/// The board's side of the protocol. It answers at once and sends nothing unasked. Frames it cannot
/// make sense of are traced and ignored.
///
/// Only identification, block reads and block writes are answered:
/// - "T": 10, the five characters, two spaces, the two version characters;
/// - "R" and, as the next frame, an address: 17, then the 16 bytes of the block;
/// - a block to write: 3, then 0 and 0 when it was stored, or 1 and the low byte of the address at
///   which it failed. Words before that address are stored. Outside a write sequence nothing is
///   stored and the failing address is the block's own; the same for a word count above 8.
///
/// "W" opens a write sequence when none is open, or when the open one has been silent for a second,
/// and closes it otherwise; "I" and a type letter end whatever is open.
class BoardEngine : public FramedBoard {
  public:
    BoardEngine(BoardClock clock, const DeviceShape& shape, Identification identification = {},
                BoardTrace trace = {});

    void Obey(const Frame& frame) override;
    void Reset() override;

    /// The device in the socket, to look into and to change between requests.
    DeviceMemory& Memory() { return memory_; }
    const DeviceMemory& Memory() const { return memory_; }

    bool WriteSequenceOpen() const { return writeOpen_; }

  private:
    std::string CarryOut(char letter);
    void Identify();
    void ReadBlock(const Frame& frame);
    void WriteBlock(const Frame& frame);
    [[nodiscard]] tl::expected<void, std::uint32_t> Store(const Frame& frame);
    bool ReadsStream(std::uint16_t address) const;
    void Reply(std::vector<std::uint8_t> bytes, const std::string& gloss);

    DeviceMemory memory_;
    Identification identification_;
    std::chrono::microseconds lastFrame_{};
    int toldType_;  // by the host, 1 for "a"; the device's own before
    bool writeOpen_ = false;
};

}  // namespace Tamber::Simulator
