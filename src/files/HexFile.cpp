#include "files/HexFile.hpp"

#include <algorithm>
#include <utility>

#include "core/TextFile.hpp"
#include "files/HexInspect.hpp"

namespace Tamber {

std::string_view HexFailureText(HexFault fault) {
    switch (fault) {
        case HexFault::ChecksumError:
            return "Checksum Error in hex file!";
        case HexFault::NoEndRecord:
            return "No end record in hex file!";
        default:
            return {};
    }
}

tl::expected<HexRecordTable, HexFailure> ReadHexRecords(std::string_view text) {
    HexRecordTable table;
    table.reserve(std::min<std::size_t>(text.size() / 40 + 1, HexRecordTableMax));
    LineReader lines(text);
    while (!lines.AtEnd()) {
        const HexRecord& record = table.emplace_back(lines);
        if (record.Fault)
            return tl::unexpected(HexFailure{*record.Fault, lines.Number(), {}});
        if (record.Type == HexRecord::EndType) {
            table.pop_back();
            return table;
        }
    }
    return tl::unexpected(HexFailure{HexFault::NoEndRecord, lines.Number() + 1, {}});
}

void CopyRecords(const HexRecordTable& table, MemoryImage& image) {
    for (const HexRecord& record : table)
        if (record.Type == HexRecord::DataType)
            image.Store(record.Address,
                        std::span(record.Data).first(static_cast<std::size_t>(record.ByteCount)));
}

tl::expected<std::string, HexFailure> LoadHexFile(const std::filesystem::path& file,
                                                  MemoryImage& image) {
    auto text = ReadTextFile(file, HexFileSizeMax, HexLineEndsMax);
    if (!text)
        return tl::unexpected(HexFailure{HexFault::FileUnreadable, 0, text.error()});
    return ReadHexRecords(*text)
        .map([&](const HexRecordTable& table) {
            CopyRecords(table, image);
            return std::move(*text);
        })
        .map_error([&](HexFailure failure) {
            if (const auto refusal = InspectHexText(*text, {}).Refusal)
                failure.Reason = HexFindingText(refusal->Finding);
            return failure;
        });
}

}  // namespace Tamber
