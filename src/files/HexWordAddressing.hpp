#pragma once

#include <optional>

#include "files/HexRecord.hpp"

namespace Tamber {

/// Finds out from the data records of a file, in file order, whether it is of the kind INHX16: word
/// addresses, high bytes first, and a byte count that counts words or bytes. Says no when in doubt.
class HexWordAddressing {
  public:
    void Add(const HexRecord& record);

    /// Every record counts words.
    bool CountsWords() const { return before_ && allCountWords_; }

    bool Found() const {
        return CountsWords() || (steps_ && !byteSteps_ && highBytesFirst_ && !highBytesSecond_);
    }

  private:
    struct Position {
        int Address;
        int ByteCount;
    };

    std::optional<Position> before_;  // of the record before
    bool allCountWords_ = true;
    bool steps_ = false;           // a record begins half as far after another as its bytes ask for
    bool byteSteps_ = false;       // one that follows another closely does not
    bool highBytesFirst_ = true;   // the first of every two bytes could be the high byte of a word
    bool highBytesSecond_ = true;  // the second could
};

}  // namespace Tamber
