#include "core/AutoSequence.hpp"

#include <algorithm>
#include <limits>
#include <string>

#include "core/FieldReader.hpp"
#include "core/TextFile.hpp"

namespace Tamber {
namespace {

constexpr std::array<std::string_view, 5> Names{"Read", "Erase", "Blank", "Program", "Verify"};

}  // namespace

std::optional<FileFailure> LoadAutoSequence(const std::filesystem::path& file,
                                            AutoSequence& sequence) {
    const auto text = ReadTextFile(file);
    if (!text.Ok())
        return FileFailure{file.string(),
                           0,
                           0,
                           text.Failure(),
                           "the Auto series",
                           "Put the file there; the single line 0 stands for an empty series."};
    FieldReader fields(file, text.Value());
    const auto count = fields.ReadNumber(
        "the number of entries", std::numeric_limits<std::int16_t>::min(), AutoSequence::LastEntry);
    if (!count.Ok())
        return count.Failure();
    sequence.AutoCount = static_cast<std::int16_t>(count.Value());
    for (int entry = 1; entry <= sequence.AutoCount; ++entry) {
        const auto code = fields.ReadShort("a function code");
        if (!code.Ok())
            return code.Failure();
        sequence.Entries[static_cast<std::size_t>(entry)] = code.Value();
    }
    return std::nullopt;
}

std::optional<FileFailure> SaveAutoSequence(const std::filesystem::path& file,
                                            const AutoSequence& sequence) {
    const int count = std::min<int>(sequence.AutoCount, AutoSequence::LastEntry);
    std::string text = std::to_string(count) + "\r\n";
    for (int entry = 1; entry <= count; ++entry)
        text += std::to_string(sequence.Entries[static_cast<std::size_t>(entry)]) + "\r\n";
    if (const auto reason = ReplaceTextFile(file, text))
        return FileFailure{file.string(),
                           0,
                           0,
                           *reason,
                           "a file that can be written",
                           "The series holds until the program ends; check the folder's "
                           "permissions and space."};
    return std::nullopt;
}

std::string_view FunctionName(std::int16_t code) {
    return code >= 0 && code < std::ssize(Names) ? Names[static_cast<std::size_t>(code)]
                                                 : std::string_view();
}

std::optional<std::int16_t> FunctionCodeOf(std::string_view name) {
    const auto found = std::ranges::find(Names, name);
    if (found == Names.end())
        return std::nullopt;
    return static_cast<std::int16_t>(found - Names.begin());
}

}  // namespace Tamber
