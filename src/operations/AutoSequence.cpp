#include "operations/AutoSequence.hpp"

#include <limits>

#include "core/FieldReader.hpp"
#include "core/TextFile.hpp"

namespace Tamber {

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

}  // namespace Tamber
