#pragma once

#include <string>

namespace Tamber {

/// Why one of the small text files could not be used, in the parts a person needs.
struct FileFailure {
    std::string File;      ///< full path of the file
    int Line = 0;          ///< 1-based line of the failure; 0 when no line is to blame
    int Field = 0;         ///< 1-based position of the value on that line; 0 when none is to blame
    std::string Found;     ///< what is there, or what the system reports
    std::string Expected;  ///< what should stand there
    std::string Remedy;    ///< what the user can do about it

    bool operator==(const FileFailure&) const = default;
};

/// `failure` as text for a message box: the file, line and field on the first line, then what was
/// found, what was expected and what to do, each on its own line; empty parts are left out.
std::string Describe(const FileFailure& failure);

}  // namespace Tamber
