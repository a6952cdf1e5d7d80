#include "core/FieldReader.hpp"

#include <charconv>
#include <utility>

#include "core/HexText.hpp"

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

std::optional<FieldReader::Field> FieldReader::NextField(std::string_view what) {
    if (failure_)
        return std::nullopt;
    SkipEmptyLines();
    if (next_ == text_.size()) {
        Fail({file_.string(), line_, fieldsOnLine_ + 1, "the end of the file", std::string(what),
              Remedy});
        return std::nullopt;
    }
    return TakeField();
}

FieldReader::Field FieldReader::TakeField() {
    const bool quoted = next_ < text_.size() && text_[next_] == '"';
    const Field field = quoted ? QuotedField() : PlainField();
    fieldLine_ = line_;
    fieldPosition_ = ++fieldsOnLine_;
    if (next_ < text_.size() && text_[next_] == ',')
        ++next_;
    else if (next_ < text_.size())
        EndLine();
    return field;
}

bool FieldReader::AtEnd() {
    SkipEmptyLines();
    return next_ == text_.size();
}

std::optional<std::uint32_t> FieldReader::ReadOptionalHex(std::string_view what,
                                                          std::uint32_t most) {
    if (failure_ || fieldsOnLine_ == 0)
        return std::nullopt;
    SkipBlanks();
    const auto [text, quoted] = TakeField();
    if (text.empty() && !quoted)
        return std::nullopt;
    std::uint32_t value = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, value, 16);
    if (!quoted && end == last && error == std::errc() && value <= most)
        return value;
    Refuse('"' + std::string(text) + '"',
           std::string(what) + ", a hexadecimal number from 0 to " + HexNumber(most));
    return std::nullopt;
}

void FieldReader::EndRecord() {
    if (failure_ || fieldsOnLine_ == 0)
        return;
    SkipBlanks();
    if (next_ == text_.size())
        return;
    if (IsLineEnd(text_[next_]))
        return EndLine();
    const Field field = TakeField();
    Refuse('"' + std::string(field.text) + '"', "the end of the line");
}

void FieldReader::Refuse(std::string_view found, std::string expected) {
    Fail({file_.string(), fieldLine_, fieldPosition_, std::string(found), std::move(expected),
          Remedy});
}

void FieldReader::Fail(FileFailure failure) {
    if (!failure_)
        failure_ = std::move(failure);
}

std::string FieldReader::ReadText(std::string_view what) {
    const auto field = NextField(what);
    return field ? std::string(field->text) : std::string();
}

std::int32_t FieldReader::ReadNumber(std::string_view what, std::int32_t least, std::int32_t most) {
    const auto field = NextField(what);
    if (!field)
        return 0;
    std::string_view digits = field->text;
    if (digits.starts_with('+') && !digits.starts_with("+-"))
        digits.remove_prefix(1);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool number = !field->quoted && end == digits.data() + digits.size() && !digits.empty();
    if (number && error == std::errc() && value >= least && value <= most)
        return static_cast<std::int32_t>(value);
    Refuse('"' + std::string(field->text) + '"', std::string(what) + ", a whole number from " +
                                                     std::to_string(least) + " to " +
                                                     std::to_string(most));
    return 0;
}

std::int16_t FieldReader::ReadShort(std::string_view what, std::int16_t least, std::int16_t most) {
    return static_cast<std::int16_t>(ReadNumber(what, least, most));
}

tl::expected<void, FileFailure> WriteNumbers(const std::filesystem::path& file,
                                             const std::vector<int>& numbers,
                                             std::string_view remedy) {
    std::string text;
    for (const int number : numbers)
        text += std::to_string(number) + "\r\n";
    return ReplaceTextFile(file, text).map_error([&](const std::string& reason) {
        return FileFailure{file.string(),      0, 0, reason, "a file that can be written",
                           std::string(remedy)};
    });
}

}  // namespace Tamber
