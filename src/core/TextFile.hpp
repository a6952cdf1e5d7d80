#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <tl/expected.hpp>

namespace Tamber {

/// Reads a file whole. The failure is the operating system's reason ("No such file or directory"),
/// or a sentence of our own for a folder or a file of more than `limit` bytes.
[[nodiscard]] tl::expected<std::string, std::string> ReadTextFile(const std::filesystem::path& path,
                                                                  std::size_t limit = 1 << 20);

/// Replaces a file by `text`, or leaves it exactly as it was: the text is written beside it, forced
/// to the disk and then renamed over it. A link is followed and stays a link; the permissions of a
/// file that was there are kept, and one that may not be written is not replaced. The failure is
/// the operating system's reason, or a sentence of our own for what is not a file.
[[nodiscard]] tl::expected<void, std::string> ReplaceTextFile(const std::filesystem::path& path,
                                                              std::string_view text);

}  // namespace Tamber
