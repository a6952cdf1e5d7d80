#include "files/HexFile.hpp"

#include <algorithm>

#include "core/TextFile.hpp"
#include "files/LineReader.hpp"

namespace Tamber {

tl::expected<HexRecordTable, HexFailure> ReadHexRecords(std::string_view text) {
    HexRecordTable table;
    table.reserve(std::min<std::size_t>(text.size() / 40 + 1, HexRecordTableMax));
    LineReader lines(text);
    int lineNumber = 1;
    const auto failed = [&](HexFault fault) {
        return tl::unexpected(HexFailure{fault, lineNumber, {}});
    };
    for (; !lines.AtEnd(); ++lineNumber) {
        if (lineNumber > HexRecordTableMax)
            return failed(HexFault::TooManyLines);
        const std::string_view line = lines.Next();
        // Cut off before its record type is whole, a line cannot be told from a shorter one of
        // another type.
        if (lines.Unfinished() && line.size() < HexRecord::TypeEnd)
            return failed(HexFault::NoEndRecord);
        HexRecord& record = table.emplace_back();
        if (!ParseHexRecord(line, record))
            return failed(HexFault::AddressError);
        if (record.Type == HexRecord::EndType) {
            table.pop_back();
            return table;
        }
        if (record.Type == HexRecord::DataType && record.ByteCount > HexRecord::DataMax)
            return failed(HexFault::TooManyBytes);
        if (!record.ChecksumGood)
            return failed(HexFault::ChecksumError);
    }
    return failed(HexFault::NoEndRecord);
}

void CopyRecords(const HexRecordTable& table, MemoryImage& image) {
    for (const HexRecord& record : table)
        if (record.Type == HexRecord::DataType)
            image.Store(record.Address,
                        std::span(record.Data).first(static_cast<std::size_t>(record.ByteCount)));
}

tl::expected<void, HexFailure> LoadHexFile(const std::filesystem::path& file, MemoryImage& image) {
    const auto text = ReadTextFile(file, HexFileSizeMax);
    if (!text)
        return tl::unexpected(HexFailure{HexFault::FileUnreadable, 0, text.error()});
    return ReadHexRecords(*text).map(
        [&](const HexRecordTable& table) { CopyRecords(table, image); });
}

}  // namespace Tamber
