#include "files/HexLineCheck.hpp"

#include <utility>

#include "core/HexText.hpp"
#include "files/HexRecord.hpp"

namespace Tamber {
namespace {

constexpr char MakeAgain[] = "Have the file made again.";
constexpr std::size_t LengthWithoutData = 11;
constexpr int CountColumn = 2;
constexpr int TypeColumn = 8;
constexpr int TypesMax = 5;

using Finding = std::optional<HexFinding>;

HexFinding At(std::size_t column, std::string wrong, std::string remedy = MakeAgain) {
    return {0, static_cast<int>(column), std::move(wrong), std::move(remedy)};
}

std::string Quoted(char character) {
    if (character > ' ' && character <= '~')
        return std::string("\"") + character + '"';
    if (character == ' ')
        return "a blank";
    if (character == '\t')
        return "a tab";
    return "the byte " + HexByte(static_cast<std::uint8_t>(character)) + " (hexadecimal)";
}

Finding CheckBeginning(std::string_view line) {
    if (line.empty())
        return At(0, "The line is empty.", "Delete it; the loader takes no line without a record.");
    if (line.front() == ':')
        return std::nullopt;
    if (line.starts_with("\xEF\xBB\xBF"))
        return At(1, "A byte-order mark stands in front of the record.",
                  "Save the file as plain ASCII, without the mark.");
    if (line.size() > 1 && line[0] == 'S' && line[1] >= '0' && line[1] <= '9')
        return At(1, "This is an S-record, not an Intel HEX record.",
                  "Have the file written as Intel HEX.");
    return At(1, Quoted(line.front()) + " stands where the colon of a record belongs.",
              "Put the colon there, or delete the line if it is no record.");
}

Finding CheckDigits(std::string_view line) {
    for (std::size_t index = 1; index < line.size(); ++index) {
        if (HexDigitValue(line[index]) >= 0)
            continue;
        const bool behind = line.find_first_not_of(" \t", index) == std::string_view::npos;
        return At(index + 1, Quoted(line[index]) + " is no hexadecimal digit.",
                  behind ? "Delete what stands behind the record." : MakeAgain);
    }
    if (line.size() < LengthWithoutData)
        return At(line.size() + 1, "The line ends before its record does.",
                  "The file may have been cut off; have it made or copied again.");
    if (line.size() % 2 == 0)
        return At(line.size() + 1, "The digits do not come in pairs; one is missing or too many.");
    return std::nullopt;
}

Finding CheckCount(std::string_view line, const HexRecord& record, bool countsWords) {
    const auto holds = static_cast<int>((line.size() - LengthWithoutData) / 2);
    const int promised = countsWords ? 2 * record.ByteCount : record.ByteCount;
    if (promised != holds)
        return At(CountColumn,
                  "The byte count promises " + std::to_string(promised) +
                      " data bytes, the line holds " + std::to_string(holds) + ".",
                  promised > holds ? "The line may have been cut off; have the file made again."
                                   : "The bytes behind them are lost; have the file made again.");
    if (record.Type == HexRecord::DataType && record.ByteCount > HexRecord::DataMax)
        return At(CountColumn,
                  "The record has more than " + std::to_string(HexRecord::DataMax) + " bytes.",
                  "Have the file written with shorter records; 16 bytes a record is common.");
    return std::nullopt;
}

// What the last pair of a line must be for all its bytes to sum to 0. All digits are good.
std::uint8_t ChecksumOf(std::string_view line) {
    int sum = 0;
    for (std::size_t index = 1; index + 2 < line.size(); index += 2)
        sum += HexDigitValue(line[index]) * 16 + HexDigitValue(line[index + 1]);
    return static_cast<std::uint8_t>(-sum & 0xFF);
}

Finding CheckMeaning(std::string_view line, const HexRecord& record) {
    if (!record.ChecksumGood)
        return At(line.size() - 1,
                  "The checksum is " + HexByte(record.Checksum) +
                      "; the digits before it ask for " + HexByte(ChecksumOf(line)) + ".",
                  "A character of the line has changed; have the file made or copied again.");
    if (record.Type > TypesMax)
        return At(TypeColumn, "No record has the type " +
                                  HexByte(static_cast<std::uint8_t>(record.Type)) + ".");
    if (record.Type == HexRecord::EndType && record.ByteCount != 0)
        return At(CountColumn, "The end record carries data, which nobody reads.");
    return std::nullopt;
}

}  // namespace

Finding CheckHexLine(std::string_view line, bool countsWords) {
    if (auto finding = CheckBeginning(line))
        return finding;
    if (auto finding = CheckDigits(line))
        return finding;
    HexRecord record;
    if (!ParseHexRecord(line, record))
        return std::nullopt;
    if (auto finding = CheckCount(line, record, countsWords))
        return finding;
    return CheckMeaning(line, record);
}

}  // namespace Tamber
