#include "files/HexFile.hpp"

#include <algorithm>

#include "core/TextFile.hpp"

namespace Tamber {
namespace {

// Far above 10,000 lines of any sense; a larger file is no HEX file.
constexpr std::size_t FileSizeMax = 64 << 20;

// Takes a text apart into its lines. The next line feed and the next carriage return are looked for
// again only once they have been passed, so that a text without one of them is searched once.
class LineReader {
  public:
    explicit LineReader(std::string_view text)
        : text_(text),
          lineFeed_(std::min(text.find('\n'), text.size())),
          carriageReturn_(std::min(text.find('\r'), text.size())) {}

    bool AtEnd() const { return next_ >= text_.size(); }

    // The line read last reached the end of the text without a line end.
    bool Unfinished() const { return unfinished_; }

    std::string_view Next() {
        lineFeed_ = Find('\n', lineFeed_);
        carriageReturn_ = Find('\r', carriageReturn_);
        const std::size_t end = std::min(lineFeed_, carriageReturn_);
        const std::string_view line = text_.substr(next_, end - next_);
        unfinished_ = end == text_.size();
        next_ = end + (text_.substr(end).starts_with("\r\n") ? 2 : 1);
        return line;
    }

  private:
    std::size_t Find(char lineEnd, std::size_t found) const {
        return found >= next_ ? found : std::min(text_.find(lineEnd, next_), text_.size());
    }

    std::string_view text_;
    std::size_t next_ = 0;
    std::size_t lineFeed_;
    std::size_t carriageReturn_;
    bool unfinished_ = false;
};

}  // namespace

HexReadResult ReadHexRecords(std::string_view text, HexRecordTable& table) {
    table.clear();
    LineReader lines(text);
    while (!lines.AtEnd()) {
        const int lineNumber = static_cast<int>(table.size()) + 1;
        if (lineNumber > HexRecordTableMax)
            return {HexOutcome::TooManyLines, lineNumber};
        const std::string_view line = lines.Next();
        const auto record = ParseHexRecord(line);
        if (!record && lines.Unfinished() && line.size() < HexRecord::LengthMin)
            return {HexOutcome::NoEndRecord, lineNumber};  // the file was cut off in its address
        if (!record)
            return {HexOutcome::AddressError, lineNumber};
        if (record->Type == HexRecord::EndType)
            return {HexOutcome::Loaded, 0};
        if (record->Type == HexRecord::DataType && record->ByteCount > HexRecord::DataMax)
            return {HexOutcome::TooManyBytes, lineNumber};
        if (!record->ChecksumGood)
            return {HexOutcome::ChecksumError, lineNumber};
        table.push_back(*record);
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
    const auto text = ReadTextFile(file, FileSizeMax);
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
