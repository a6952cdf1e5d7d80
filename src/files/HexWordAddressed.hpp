#pragma once

#include <vector>

#include "files/HexRecord.hpp"

namespace Tamber {

/// How a HEX file counts its data.
enum class HexUnit {
    Bytes,       ///< byte addresses, byte counts, low bytes first: what the loader takes
    Words,       ///< INHX16: word addresses, the count is one of words, high bytes first
    WordsSized,  ///< the same with a count of bytes
};

/// Finds out from the data records of a file, in file order, how it counts. Says Bytes when in
/// doubt.
HexUnit UnitOfRecords(const std::vector<HexRecord>& data);

}  // namespace Tamber
