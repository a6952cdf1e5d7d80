#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "core/FileFailure.hpp"
#include "core/Result.hpp"

namespace Tamber {

/// Reads the fields of a small text file one after the other. A field ends at a comma or a line end
/// (CR LF, LF or CR), so line ends carry no meaning of their own; blanks before a field are
/// skipped, and so are lines with nothing on them. The device list, the settings and the Auto
/// series are all read with it.
class FieldReader {
  public:
    /// `file` is only named in failures; `text` is the file's contents and must outlive the reader.
    FieldReader(std::filesystem::path file, std::string_view text);

    /// A text field: in double quotes it may hold commas and ends at the closing quote; otherwise
    /// it ends at the next comma or line end and loses its trailing blanks. `what` names the field
    /// in a failure, which comes only when the file has ended.
    Result<std::string, FileFailure> ReadText(std::string_view what);

    /// A decimal whole number from `least` to `most`. Fails at the end of the file, at anything
    /// that is not a number, and outside the range.
    Result<std::int32_t, FileFailure> ReadNumber(std::string_view what, std::int32_t least,
                                                 std::int32_t most);

    /// A decimal whole number of 16 bits, -32768..32767.
    Result<std::int16_t, FileFailure> ReadShort(std::string_view what);

    /// A failure that blames the field read last.
    FileFailure Blame(std::string found, std::string expected) const;

  private:
    struct Field {
        std::string_view text;
        bool quoted = false;
    };

    bool NextField(Field& field);
    void SkipBlanks();
    void SkipEmptyLines();
    void EndLine();
    Field QuotedField();
    Field PlainField();
    FileFailure Ended(std::string_view what) const;

    std::filesystem::path file_;
    std::string_view text_;
    std::size_t next_ = 0;
    int line_ = 1;          // line on which next_ stands
    int fieldsOnLine_ = 0;  // fields of that line already read
    int fieldLine_ = 1;     // line and position of the field read last
    int fieldPosition_ = 0;
};

}  // namespace Tamber
