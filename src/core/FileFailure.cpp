#include "core/FileFailure.hpp"

#include "core/Utf8.hpp"

namespace Tamber {

std::string Describe(const FileFailure& failure) {
    std::string text = VisibleText(failure.File);
    if (failure.Line > 0)
        text += ", line " + std::to_string(failure.Line);
    if (failure.Field > 0)
        text += ", field " + std::to_string(failure.Field);
    text += "\nFound: " + VisibleText(failure.Found);
    if (!failure.Expected.empty())
        text += "\nExpected: " + failure.Expected;
    if (!failure.Remedy.empty())
        text += "\n" + failure.Remedy;
    return text;
}

}  // namespace Tamber
