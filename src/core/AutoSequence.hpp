#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

#include "core/FileFailure.hpp"

namespace Tamber {

/// The device functions an Auto series may hold. The numbers are those of the series file and the
/// rows of the function dialog's list.
enum FunctionCode : std::int16_t {
    FunctionRead = 0,
    FunctionErase = 1,
    FunctionBlank = 2,
    FunctionProgram = 3,
    FunctionVerify = 4,
    FunctionAuto = 5,  ///< a row of the dialog's list only, never an entry
};

/// A series of device functions to run in one go.
struct AutoSequence {
    static constexpr int LastEntry = 20;

    std::int16_t AutoCount = 0;  ///< entries in use, at most 20; below 1 nothing runs
    std::array<std::int16_t, LastEntry + 1> Entries{};  ///< 1..20, index 0 is never used
};

/// Reads the series: the count, then that many codes. Fails when the file cannot be read, is cut
/// short, holds something that is no number, or counts more than 20 entries; `sequence` is then to
/// be discarded. Codes outside 0..4 are taken as they are, and so is a negative count.
[[nodiscard]] std::optional<FileFailure> LoadAutoSequence(const std::filesystem::path& file,
                                                          AutoSequence& sequence);

/// Replaces the series file: the count, then the codes, one a line, each ended by CR LF. The file
/// that was there stays as it was when that fails.
[[nodiscard]] std::optional<FileFailure> SaveAutoSequence(const std::filesystem::path& file,
                                                          const AutoSequence& sequence);

/// The name under which a code 0..4 is listed ("Read", "Erase", ...); empty for any other.
std::string_view FunctionName(std::int16_t code);

/// The code of a name, by exact comparison; nothing for a text that is no name.
std::optional<std::int16_t> FunctionCodeOf(std::string_view name);

}  // namespace Tamber
