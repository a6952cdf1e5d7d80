#include "files/HexFile.hpp"

#include <algorithm>

#include "core/TextFile.hpp"
#include "files/LineReader.hpp"

namespace Tamber {
HexReadResult ReadHexRecords(std::string_view text, HexRecordTable& table) {
    table.clear();
    LineReader lines(text);
    while (!lines.AtEnd()) {
        const int lineNumber = static_cast<int>(table.size()) + 1;
        if (lineNumber > HexRecordTableMax)
            return {HexOutcome::TooManyLines, lineNumber};
        const std::string_view line = lines.Next();
        // Cut off before its record type is whole, a line cannot be told from a shorter one of
        // another type.
        if (lines.Unfinished() && line.size() < HexRecord::TypeEnd)
            return {HexOutcome::NoEndRecord, lineNumber};
        HexRecord& record = table.emplace_back();
        if (!ParseHexRecord(line, record))
            return {HexOutcome::AddressError, lineNumber};
        if (record.Type == HexRecord::EndType) {
            table.pop_back();
            return {HexOutcome::Loaded, 0};
        }
        if (record.Type == HexRecord::DataType && record.ByteCount > HexRecord::DataMax)
            return {HexOutcome::TooManyBytes, lineNumber};
        if (!record.ChecksumGood)
            return {HexOutcome::ChecksumError, lineNumber};
    }
    return {HexOutcome::NoEndRecord, static_cast<int>(table.size()) + 1};
}

void CopyRecords(const HexRecordTable& table, MemoryImage& image) {
    for (const HexRecord& record : table)
        if (record.Type == HexRecord::DataType)
            image.Store(record.Address,
                        std::span(record.Data).first(static_cast<std::size_t>(record.ByteCount)));
}

HexReadResult LoadHexFile(const std::filesystem::path& file, MemoryImage& image) {
    const auto text = ReadTextFile(file, HexFileSizeMax);
    if (!text.Ok())
        return {HexOutcome::FileUnreadable, 0};
    HexRecordTable table;
    table.reserve(std::min<std::size_t>(text.Value().size() / 40 + 1, HexRecordTableMax));
    const HexReadResult result = ReadHexRecords(text.Value(), table);
    if (result.Outcome == HexOutcome::Loaded)
        CopyRecords(table, image);
    return result;
}

}  // namespace Tamber
