#pragma once

#include <cstddef>
#include <filesystem>
#include <limits>
#include <string>
#include <string_view>
#include <tl/expected.hpp>

namespace Tamber {

/// Reads a file whole. The failure is the operating system's reason ("No such file or directory"),
/// or a sentence of our own for a file of more than `limit` bytes and for what is not a regular
/// file: a folder, or a pipe that might keep its reader waiting. What comes after `lineEnds` line
/// feeds and carriage returns may be missing.
[[nodiscard]] tl::expected<std::string, std::string> ReadTextFile(
    const std::filesystem::path& path, std::size_t limit = 1 << 20,
    std::size_t lineEnds = std::numeric_limits<std::size_t>::max());

/// How many line feeds and carriage returns there are in `text`.
std::size_t CountLineEnds(std::string_view text);

/// Replaces a file by `text`, or leaves it as it was: the text is written beside it, forced to the
/// disk and then renamed over it. Where no file can be made beside it, and where it has several
/// names (hard links), which all keep the text, it is written in place; such a write is not safe
/// against a power failure. A link is followed and stays a link; the permissions of a file that was
/// there are kept, owner and extended attributes where the system allows it, and one that may not
/// be written is not replaced. The failure is the operating system's reason, or a sentence of our
/// own for what is not a file.
[[nodiscard]] tl::expected<void, std::string> ReplaceTextFile(const std::filesystem::path& path,
                                                              std::string_view text);

/// Whether the file can be read or replaced, as far as can be known without doing so; the failures
/// are the same.
[[nodiscard]] tl::expected<void, std::string> CheckReadable(const std::filesystem::path& path);
[[nodiscard]] tl::expected<void, std::string> CheckReplaceable(const std::filesystem::path& path);

}  // namespace Tamber
