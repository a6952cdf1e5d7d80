#include "files/HexFinding.hpp"

#include <algorithm>
#include <numeric>

#include "core/HexText.hpp"

namespace Tamber {
namespace {

using Kind = HexFindingKind;
using Finding = std::optional<HexFinding>;

constexpr int CountColumn = 2;
constexpr int TypeColumn = 8;
constexpr int TypesMax = 5;

HexFinding At(Kind kind, std::size_t column, std::int64_t expected = 0, std::int64_t found = 0) {
    return {.Kind = kind, .Column = static_cast<int>(column), .Expected = expected, .Found = found};
}

Finding CheckBeginning(std::string_view line) {
    if (line.empty())
        return At(Kind::EmptyLine, 0);
    if (line.front() == ':')
        return std::nullopt;
    if (line.starts_with("\xEF\xBB\xBF"))
        return At(Kind::ByteOrderMark, 1);
    if (line.size() > 1 && line[0] == 'S' && line[1] >= '0' && line[1] <= '9')
        return At(Kind::SRecord, 1);
    return At(Kind::NoColon, 1, ':', line.front());
}

Finding CheckDigits(std::string_view line) {
    for (std::size_t index = 1; index < line.size(); ++index) {
        if (HexDigitValue(line[index]) >= 0)
            continue;
        const bool blanks = line.find_first_not_of(" \t", index) == std::string_view::npos;
        return At(blanks ? Kind::AfterRecord : Kind::NoDigit, index + 1, 0, line[index]);
    }
    if (line.size() < HexRecord::LengthWithoutData)
        return At(Kind::CutLine, line.size() + 1);
    if (line.size() % 2 == 0)
        return At(Kind::OddDigits, line.size() + 1);
    return std::nullopt;
}

// What the last pair of a line must be for all its bytes to sum to 0. All digits are good.
std::uint8_t ChecksumOf(std::string_view line) {
    int sum = 0;
    for (std::size_t index = 1; index + 2 < line.size(); index += 2)
        sum += HexDigitValue(line[index]) * 16 + HexDigitValue(line[index + 1]);
    return static_cast<std::uint8_t>(-sum & 0xFF);
}

Finding CheckFields(const HexRecord& record) {
    const bool words = record.CountsWords();
    const int bytes = record.BytesOnLine();
    if (record.ByteCount != bytes && !words)
        return At(Kind::ByteCount, CountColumn, record.ByteCount, bytes);
    if (record.Type == HexRecord::DataType && record.ByteCount > HexRecord::DataMax)
        return At(Kind::LongRecord, CountColumn, HexRecord::DataMax, record.ByteCount);
    if (!record.ChecksumGood)
        return At(Kind::Checksum, record.Line.size() - 1, ChecksumOf(record.Line), record.Checksum);
    if (record.Type > TypesMax)
        return At(Kind::RecordType, TypeColumn, TypesMax, record.Type);
    if (record.Type == HexRecord::EndType && record.ByteCount != 0)
        return At(Kind::EndRecordData, CountColumn, 0, record.ByteCount);
    if (words)
        return At(Kind::WordCount, CountColumn, record.ByteCount, bytes);
    return std::nullopt;
}

}  // namespace

void HexFindings::Add(const HexFinding& finding) {
    if (++totals_[static_cast<std::size_t>(finding.Kind)] <= KeptMax)
        kept_.push_back(finding);
}

void HexFindings::Drop(HexFindingKind kind) {
    totals_[static_cast<std::size_t>(kind)] = 0;
    std::erase_if(kept_, [kind](const HexFinding& finding) { return finding.Kind == kind; });
}

int HexFindings::Total(HexFindingKind first, HexFindingKind last) const {
    return std::accumulate(totals_.begin() + static_cast<int>(first),
                           totals_.begin() + static_cast<int>(last) + 1, 0);
}

std::optional<HexFinding> CheckHexLine(const HexRecord& record) {
    if (auto finding = CheckBeginning(record.Line))
        return finding;
    if (auto finding = CheckDigits(record.Line))
        return finding;
    return CheckFields(record);
}

}  // namespace Tamber
