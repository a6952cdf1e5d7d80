#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

#include "core/FileFailure.hpp"
#include "core/TextFile.hpp"

namespace Tamber {

/// Reads the fields of a small text file, such as the device list, one after the other. A field
/// ends at a comma or a line end (CR LF, LF or CR), so line ends carry no meaning of their own;
/// blanks before a field are skipped, and so are lines with nothing on them. The first failure is
/// kept: every later read gives an empty text or 0 and changes nothing.
class FieldReader {
  public:
    /// `file` is only named in failures; `text` is the file's contents and must outlive the reader.
    FieldReader(std::filesystem::path file, std::string_view text);

    /// A text field: in double quotes it may hold commas and ends at the closing quote; otherwise
    /// it ends at the next comma or line end and loses its trailing blanks. `what` names the field
    /// in a failure, which comes only when the file has ended.
    std::string ReadText(std::string_view what);

    /// A decimal whole number from `least` to `most`. Fails at the end of the file, at anything
    /// that is not a number, and outside the range.
    std::int32_t ReadNumber(std::string_view what, std::int32_t least, std::int32_t most);

    /// A decimal whole number of 16 bits, -32768..32767, or of a narrower range.
    std::int16_t ReadShort(std::string_view what, std::int16_t least = INT16_MIN,
                           std::int16_t most = INT16_MAX);

    /// Where a record is one line: true when no line with something on it is left.
    bool AtEnd();

    /// A hexadecimal number from 0 to `most` that may be missing: none when nothing stands between
    /// the commas or the line has ended. It never reaches into the next line; the record's first
    /// field must have been read with another of these functions.
    std::optional<std::uint32_t> ReadOptionalHex(std::string_view what, std::uint32_t most);

    /// Where a record is one line: ends it. Fails when the line holds more.
    void EndRecord();

    /// Fails because of the field read last, unless an earlier read has failed.
    void Refuse(std::string_view found, std::string expected);

    /// Fails for a reason of the caller's, unless an earlier read has failed.
    void Fail(FileFailure failure);

    /// The first failure, if there was one.
    const std::optional<FileFailure>& Failure() const { return failure_; }

  private:
    struct Field {
        std::string_view text;
        bool quoted = false;
    };

    std::optional<Field> NextField(std::string_view what);
    Field TakeField();
    void SkipBlanks();
    void SkipEmptyLines();
    void EndLine();
    Field QuotedField();
    Field PlainField();

    std::filesystem::path file_;
    std::string_view text_;
    std::optional<FileFailure> failure_;
    std::size_t next_ = 0;
    int line_ = 1;          // the line of next_
    int fieldsOnLine_ = 0;  // fields of that line already read
    int fieldLine_ = 1;     // line and position of the field read last
    int fieldPosition_ = 0;
};

/// Reads a small text file: `read` takes its fields from a FieldReader and returns what they mean.
/// Returns that or the reader's first failure. When the file cannot be read, the failure has
/// `contents` for what was expected and `remedy` for what the user can do.
template <typename Read>
auto ReadFields(const std::filesystem::path& file, std::string_view contents,
                std::string_view remedy, Read read)
    -> tl::expected<decltype(read(std::declval<FieldReader&>())), FileFailure> {
    const auto text = ReadTextFile(file);
    if (!text)
        return tl::unexpected(FileFailure{file.string(), 0, 0, text.error(), std::string(contents),
                                          std::string(remedy)});
    FieldReader fields(file, *text);
    auto value = read(fields);
    if (fields.Failure())
        return tl::unexpected(*fields.Failure());
    return value;
}

/// Replaces `file` by `numbers`, one a line, each ended by CR LF. The file that was there stays as
/// it was when that fails; `remedy` then says what that means and what the user can do.
[[nodiscard]] tl::expected<void, FileFailure> WriteNumbers(const std::filesystem::path& file,
                                                           const std::vector<int>& numbers,
                                                           std::string_view remedy);

}  // namespace Tamber
