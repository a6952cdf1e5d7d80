#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

#include "core/MemoryImage.hpp"
#include "files/HexRecord.hpp"

namespace Tamber {

struct HexFailure {
    HexFault Fault = HexFault::FileUnreadable;
    int Line = 0;        ///< 1-based; 0 where no line is to blame
    std::string Reason;  ///< the same in words; only LoadHexFile looks for them

    bool operator==(const HexFailure&) const = default;
};

/// What the user is told about a load that failed, and the title over it. The text is empty for the
/// failures that end a load quietly.
std::string_view HexFailureText(HexFault fault);
constexpr char HexFailureTitle[] = "File Load Error";

/// The most bytes that a HEX file may have: far above 10,000 lines of any sense.
constexpr std::size_t HexFileSizeMax = 64 << 20;

/// No more is looked at: the lines up to the end record, at most one too many, and as many after
/// it, with two characters to end each.
constexpr std::size_t HexLineEndsMax = std::size_t{4} * (HexRecordTableMax + 1);

/// The lines of a HEX file before its end record, in file order. The records look into the text
/// they were read from.
using HexRecordTable = std::vector<HexRecord>;

/// Reads and checks a HEX file's text up to its end record; what follows that is not looked at.
/// Lines end in CR LF, LF or CR.
[[nodiscard]] tl::expected<HexRecordTable, HexFailure> ReadHexRecords(std::string_view text);

/// Stores the data records, in order, at their addresses; every other byte keeps its value. Record
/// types other than data are passed over, so extended addresses shift nothing.
void CopyRecords(const HexRecordTable& table, MemoryImage& image);

/// Loads a HEX file into the image and returns its text. The image changes only when the whole file
/// was good.
[[nodiscard]] tl::expected<std::string, HexFailure> LoadHexFile(const std::filesystem::path& file,
                                                                MemoryImage& image);

}  // namespace Tamber
