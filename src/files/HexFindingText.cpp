#include "core/HexText.hpp"
#include "files/HexFinding.hpp"

namespace Tamber {
namespace {

using Kind = HexFindingKind;

constexpr char MakeAgain[] = "Have the file made again.";

std::string Byte(std::int64_t value) {
    return HexByte(static_cast<std::uint8_t>(value));
}

std::string Quoted(std::int64_t value) {
    const char character = static_cast<char>(value);
    if (character > ' ' && character <= '~')
        return std::string("\"") + character + '"';
    if (character == ' ')
        return "a blank";
    if (character == '\t')
        return "a tab";
    return "the byte " + Byte(value) + " (hexadecimal)";
}

HexFindingWords CountWords(const HexFinding& finding) {
    return {"The byte count promises " + std::to_string(finding.Expected) +
                " data bytes, the line holds " + std::to_string(finding.Found) + ".",
            finding.Expected > finding.Found
                ? "The line may have been cut off; have the file made again."
                : "The bytes after them are lost; have the file made again."};
}

HexFindingWords IgnoredWords(const HexFinding& finding) {
    constexpr const char* names[] = {"extended segment address", "start segment address",
                                     "extended linear address", "start linear address"};
    const int type = IgnoredType(finding.Kind);
    return {
        "The record of type 0" + std::to_string(type) + " (" + names[type - 2] + ", " +
            HexWord(static_cast<std::uint32_t>(finding.Found)) + ") is ignored.",
        finding.Severity == HexSeverity::Harmful
            ? "The records after it are loaded at their own addresses, where they do not belong."
            : ""};
}

std::string LinesAfterEndText(std::int64_t lines) {
    constexpr char after[] = " after the end record ";
    if (lines == 1)
        return std::string("1 line") + after + "is ignored.";
    return (lines > LinesAfterEndMax ? "More than " + std::to_string(LinesAfterEndMax)
                                     : std::to_string(lines)) +
           " lines" + after + "are ignored.";
}

HexFindingWords OverlapWords(const HexFinding& finding) {
    return {"Byte address " + HexRangeText(finding.Bytes) + " is stored again, after line " +
                std::to_string(finding.EarlierLine) + ".",
            finding.Severity == HexSeverity::Harmful ? "The bytes differ and the later ones count."
                                                     : "The bytes are the same."};
}

}  // namespace

HexFindingWords WordsOf(const HexFinding& finding) {
    switch (finding.Kind) {
        case Kind::EmptyLine:
            return {"The line is empty.", "Delete it; the loader takes no line without a record."};
        case Kind::ByteOrderMark:
            return {"A byte-order mark stands in front of the record.",
                    "Save the file as plain ASCII, without the mark."};
        case Kind::SRecord:
            return {"This is an S-record, not an Intel HEX record.",
                    "Have the file written as Intel HEX."};
        case Kind::NoColon:
            return {Quoted(finding.Found) + " stands where the colon of a record belongs.",
                    "Put the colon there, or delete the line if it is not a record."};
        case Kind::NoDigit:
            return {Quoted(finding.Found) + " is not a hexadecimal digit.", MakeAgain};
        case Kind::AfterRecord:
            return {Quoted(finding.Found) + " is not a hexadecimal digit.",
                    "Delete what follows the record."};
        case Kind::CutLine:
            return {"The line ends before its record does.",
                    "The file may have been cut off; have it made or copied again."};
        case Kind::OddDigits:
            return {"The digits do not come in pairs; one is missing or too many.", MakeAgain};
        case Kind::ByteCount:
        case Kind::WordCount:
            return CountWords(finding);
        case Kind::LongRecord:
            return {"The record has more than " + std::to_string(finding.Expected) + " bytes.",
                    "Have the file written with shorter records; 16 bytes a record is common."};
        case Kind::Checksum:
            return {"The checksum is " + Byte(finding.Found) + "; the digits before it ask for " +
                        Byte(finding.Expected) + ".",
                    "A character of the line has changed; have the file made or copied again."};
        case Kind::RecordType:
            return {"No record has the type " + Byte(finding.Found) + ".", MakeAgain};
        case Kind::EndRecordData:
            return {"The end record carries data, which is ignored.", MakeAgain};
        case Kind::TooManyLines:
            return {"The file has more than " + std::to_string(HexRecordTableMax) + " lines.",
                    "Have it written with longer records; 16 bytes a record is common."};
        case Kind::NoEndRecord:
            return {"The file has no end record.",
                    "It may have been cut off; have it made or copied again. The last line of a "
                    "whole file is :00000001FF."};
        case Kind::ExtendedSegmentAddress:
        case Kind::StartSegmentAddress:
        case Kind::ExtendedLinearAddress:
        case Kind::StartLinearAddress:
            return IgnoredWords(finding);
        case Kind::Overlap:
            return OverlapWords(finding);
        case Kind::LinesAfterEnd:
            return {LinesAfterEndText(finding.Found), ""};
    }
    return {};
}

std::string HexFindingText(const HexFinding& finding) {
    const auto [wrong, remedy] = WordsOf(finding);
    std::string text;
    if (finding.Line > 0)
        text = "Line " + std::to_string(finding.Line) +
               (finding.Column > 0 ? ", column " + std::to_string(finding.Column) : "") + ": ";
    return text + wrong + (remedy.empty() ? "" : " " + remedy);
}

std::string HexRangeText(const HexRange& range) {
    const std::string first = HexWord(static_cast<std::uint32_t>(range.First));
    return range.Last == range.First
               ? first
               : first + "-" + HexWord(static_cast<std::uint32_t>(range.Last));
}

}  // namespace Tamber
