#include "core/FieldReader.hpp"

#include <charconv>
#include <limits>
#include <utility>

namespace Tamber {
namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr char Remedy[] = "Correct the file and start Tamber again.";

bool IsBlank(char character) {
    return character == ' ' || character == '\t';
}
bool IsLineEnd(char character) {
    return character == '\r' || character == '\n';
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

}  // namespace

FieldReader::FieldReader(std::filesystem::path file, std::string_view text)
    : file_(std::move(file)), text_(text) {
    if (text_.starts_with(Utf8Mark))
        text_.remove_prefix(Utf8Mark.size());
}

void FieldReader::SkipBlanks() {
    while (next_ < text_.size() && IsBlank(text_[next_]))
        ++next_;
}

void FieldReader::EndLine() {
    if (text_.substr(next_).starts_with("\r\n"))
        ++next_;
    ++next_;
    ++line_;
    fieldsOnLine_ = 0;
}

void FieldReader::SkipEmptyLines() {
    SkipBlanks();
    while (next_ < text_.size() && IsLineEnd(text_[next_])) {
        EndLine();
        SkipBlanks();
    }
}

FieldReader::Field FieldReader::QuotedField() {
    const std::size_t begin = ++next_;
    while (next_ < text_.size() && text_[next_] != '"' && !IsLineEnd(text_[next_]))
        ++next_;
    const Field field{text_.substr(begin, next_ - begin), true};
    while (next_ < text_.size() && text_[next_] != ',' && !IsLineEnd(text_[next_]))
        ++next_;
    return field;
}

FieldReader::Field FieldReader::PlainField() {
    const std::size_t begin = next_;
    while (next_ < text_.size() && text_[next_] != ',' && !IsLineEnd(text_[next_]))
        ++next_;
    return {WithoutTrailingBlanks(text_.substr(begin, next_ - begin)), false};
}

bool FieldReader::NextField(Field& field) {
    SkipEmptyLines();
    if (next_ == text_.size())
        return false;
    field = text_[next_] == '"' ? QuotedField() : PlainField();
    fieldLine_ = line_;
    fieldPosition_ = ++fieldsOnLine_;
    if (next_ < text_.size() && text_[next_] == ',')
        ++next_;
    else if (next_ < text_.size())
        EndLine();
    return true;
}

FileFailure FieldReader::Ended(std::string_view what) const {
    return {file_.string(),    line_, fieldsOnLine_ + 1, "the end of the file",
            std::string(what), Remedy};
}

FileFailure FieldReader::Blame(std::string found, std::string expected) const {
    return {file_.string(),   fieldLine_,          fieldPosition_,
            std::move(found), std::move(expected), Remedy};
}

Result<std::string, FileFailure> FieldReader::ReadText(std::string_view what) {
    Field field;
    if (!NextField(field))
        return Result<std::string, FileFailure>::Failed(Ended(what));
    return Result<std::string, FileFailure>::Success(std::string(field.text));
}

Result<std::int32_t, FileFailure> FieldReader::ReadNumber(std::string_view what, std::int32_t least,
                                                          std::int32_t most) {
    using Number = Result<std::int32_t, FileFailure>;
    Field field;
    if (!NextField(field))
        return Number::Failed(Ended(what));
    std::string_view digits = field.text;
    if (digits.starts_with('+') && !digits.starts_with("+-"))
        digits.remove_prefix(1);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool number = !field.quoted && end == digits.data() + digits.size() && !digits.empty();
    if (!number || error != std::errc() || value < least || value > most)
        return Number::Failed(Blame('"' + std::string(field.text) + '"',
                                    std::string(what) + ", a whole number from " +
                                        std::to_string(least) + " to " + std::to_string(most)));
    return Number::Success(static_cast<std::int32_t>(value));
}

Result<std::int16_t, FileFailure> FieldReader::ReadShort(std::string_view what) {
    using Limits = std::numeric_limits<std::int16_t>;
    const auto number = ReadNumber(what, Limits::min(), Limits::max());
    if (!number.Ok())
        return Result<std::int16_t, FileFailure>::Failed(number.Failure());
    return Result<std::int16_t, FileFailure>::Success(static_cast<std::int16_t>(number.Value()));
}

}  // namespace Tamber
