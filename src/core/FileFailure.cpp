#include "core/FileFailure.hpp"

namespace Tamber {

std::string Describe(const FileFailure& failure) {
    std::string text = failure.File;
    if (failure.Line > 0)
        text += ", line " + std::to_string(failure.Line);
    if (failure.Field > 0)
        text += ", field " + std::to_string(failure.Field);
    text += "\nFound: " + failure.Found;
    if (!failure.Expected.empty())
        text += "\nExpected: " + failure.Expected;
    if (!failure.Remedy.empty())
        text += "\n" + failure.Remedy;
    return text;
}

}  // namespace Tamber
