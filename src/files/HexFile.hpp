#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "core/MemoryImage.hpp"
#include "files/HexRecord.hpp"

namespace Tamber {

/// What became of reading an Intel HEX file.
enum class HexOutcome {
    Loaded,
    ChecksumError,   ///< a line before the end record does not sum to 0
    NoEndRecord,     ///< the file ended without one, be it in the middle of a line
    AddressError,    ///< a line whose address field does not read as a number
    TooManyBytes,    ///< a data record of more than HexRecord::DataMax bytes
    TooManyLines,    ///< more than HexRecordTableMax lines up to and with the end record
    FileUnreadable,  ///< the file cannot be opened or read
};

struct HexReadResult {
    HexOutcome Outcome = HexOutcome::Loaded;
    int Line = 0;  ///< 1-based line of a failure, 0 where no line is to blame

    bool operator==(const HexReadResult&) const = default;
};

/// The most bytes that a HEX file may have: far above 10,000 lines of any sense.
constexpr std::size_t HexFileSizeMax = 64 << 20;

/// The most lines that a HEX file may have, the end record's included.
constexpr int HexRecordTableMax = 10'000;

/// The lines of a HEX file before its end record, in file order. The records look into the text
/// they were read from.
using HexRecordTable = std::vector<HexRecord>;

/// Reads and checks a HEX file's text up to its end record; what stands behind that is not looked
/// at. Lines end in CR LF, LF or CR.
[[nodiscard]] HexReadResult ReadHexRecords(std::string_view text, HexRecordTable& table);

/// Stores the data records, in order, at their addresses; every other byte keeps its value. Record
/// types other than data are passed over, so extended addresses shift nothing.
void CopyRecords(const HexRecordTable& table, MemoryImage& image);

/// Loads a HEX file into the image. The image changes only when the whole file was good.
[[nodiscard]] HexReadResult LoadHexFile(const std::filesystem::path& file, MemoryImage& image);

}  // namespace Tamber
