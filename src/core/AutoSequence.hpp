#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <span>
#include <tl/expected.hpp>

#include "core/FileFailure.hpp"

namespace Tamber {

/// The device functions. The numbers are those of the series file.
enum FunctionCode : std::int16_t {
    FunctionRead = 0,
    FunctionErase = 1,
    FunctionBlank = 2,
    FunctionProgram = 3,
    FunctionVerify = 4,
    FunctionAuto = 5,  ///< runs a series, and is never an entry of one
};

/// A series of device functions to run in one go.
struct AutoSequence {
    static constexpr int LastEntry = 20;

    std::int16_t AutoCount = 0;  ///< entries in use, at most 20; below 1 nothing runs
    std::array<std::int16_t, LastEntry + 1> Entries{};  ///< 1..20, index 0 is never used

    /// The codes of the entries in use, in running order.
    std::span<const std::int16_t> Codes() const {
        return std::span(Entries).subspan(1).first(
            static_cast<std::size_t>(std::clamp<int>(AutoCount, 0, LastEntry)));
    }
};

/// Reads the series: the count, then that many codes. Fails when the file cannot be read, is cut
/// short, holds something that is no number, or counts more than 20 entries. Codes outside 0..4 are
/// taken as they are, and so is a negative count.
[[nodiscard]] tl::expected<AutoSequence, FileFailure> LoadAutoSequence(
    const std::filesystem::path& file);

/// Replaces the series file: the count, then the codes, one a line, each ended by CR LF. The file
/// that was there stays as it was when that fails.
[[nodiscard]] tl::expected<void, FileFailure> SaveAutoSequence(const std::filesystem::path& file,
                                                               const AutoSequence& sequence);

}  // namespace Tamber
