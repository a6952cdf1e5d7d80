#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "files/HexPlaces.hpp"
#include "files/HexRecord.hpp"

namespace Tamber {

/// What there is to say about a HEX file.
enum class HexFindingKind {
    // Lines that are not by the letter of the format, and a file that is too long or cut off.
    EmptyLine,
    ByteOrderMark,
    SRecord,
    NoColon,      ///< Found: the character in its place
    NoDigit,      ///< Found: the character
    AfterRecord,  ///< blanks, the first of which is Found
    CutLine,
    OddDigits,
    ByteCount,  ///< Expected: the byte count; Found: the bytes on the line
    WordCount,  ///< the same of a line that would be right if it counted words
    LongRecord,
    Checksum,       ///< Expected and Found
    RecordType,     ///< Found
    EndRecordData,  ///< Found: its byte count
    TooManyLines,
    NoEndRecord,
    // Records that the loader checks and passes over, types 2 to 5. Found: the data as one number,
    // high byte first.
    ExtendedSegmentAddress,
    StartSegmentAddress,
    ExtendedLinearAddress,
    StartLinearAddress,
    Overlap,        ///< Bytes were stored by EarlierLine already; the later record counts
    LinesAfterEnd,  ///< Found: their number, at most one more than LinesAfterEndMax
};

/// How many lines after the end record are looked at.
constexpr int LinesAfterEndMax = 10'000;

/// The type of a record that is passed over.
constexpr int IgnoredType(HexFindingKind kind) {
    return 2 + static_cast<int>(kind) - static_cast<int>(HexFindingKind::ExtendedSegmentAddress);
}

enum class HexSeverity {
    Note,       ///< loads as it is meant
    Malformed,  ///< loads, though not by the letter of the format
    Harmful,    ///< loads, but not as it is meant
    Refused,    ///< the loader refuses a file with this
};

struct HexFinding {
    HexFindingKind Kind = HexFindingKind::EmptyLine;
    HexSeverity Severity = HexSeverity::Malformed;
    int Line = 0;    ///< 1-based; 0 when no single line is meant
    int Column = 0;  ///< 1-based; 0 when the whole line is meant
    std::int64_t Expected = 0;
    std::int64_t Found = 0;
    HexRange Bytes = {};  ///< image bytes that are concerned
    int EarlierLine = 0;  ///< another line that is concerned
};

/// Findings in the order in which they were made. Of each kind the first KeptMax are kept and the
/// others counted.
class HexFindings {
  public:
    static constexpr int KeptMax = 100;

    void Add(const HexFinding& finding);

    /// Forgets the findings of a kind.
    void Drop(HexFindingKind kind);

    const std::vector<HexFinding>& Kept() const { return kept_; }

    /// How many were made of the kinds from `first` to `last`.
    int Total(HexFindingKind first = HexFindingKind::EmptyLine,
              HexFindingKind last = HexFindingKind::LinesAfterEnd) const;

  private:
    std::vector<HexFinding> kept_;
    std::array<int, static_cast<int>(HexFindingKind::LinesAfterEnd) + 1> totals_{};
};

/// Looks at one line by the letter of the Intel HEX format, where the loader is content with less.
/// Gives the first thing that is wrong, its Line left at 0, or nothing. What the loader refuses is
/// always wrong.
std::optional<HexFinding> CheckHexLine(const HexRecord& record);

/// A finding in words: what there is and what was expected, and what to do about it or what comes
/// of it, which may be empty.
struct HexFindingWords {
    std::string Wrong;
    std::string Remedy;
};
HexFindingWords WordsOf(const HexFinding& finding);

/// The words after the line and column that they are about.
std::string HexFindingText(const HexFinding& finding);

/// Hexadecimal addresses, "0010-001F", or "0010" for a single one.
std::string HexRangeText(const HexRange& range);

}  // namespace Tamber
