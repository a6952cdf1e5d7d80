#include "core/TextFile.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <system_error>
#include <utility>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace Tamber {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

// `mode` as for fopen; with an "x" in it, a file that exists is not opened.
FileHandle Open(const std::filesystem::path& path, const char* mode) {
#ifdef _WIN32
    return FileHandle(_wfopen(path.c_str(), std::filesystem::path(mode).c_str()));
#else
    return FileHandle(std::fopen(path.c_str(), mode));
#endif
}

using Done = tl::expected<void, std::string>;

std::string LastReason() {
    return std::generic_category().message(errno);
}

bool ForceToDisk(std::FILE* file) {
#ifdef _WIN32
    return _commit(_fileno(file)) == 0;
#else
    return fsync(fileno(file)) == 0;
#endif
}

// The file that a chain of links leads to, whether or not it exists.
std::filesystem::path LinkTarget(std::filesystem::path path) {
    constexpr int linksMax = 40;  // as many as the system itself follows
    std::error_code error;
    for (int links = 0; links < linksMax && std::filesystem::is_symlink(path, error); ++links)
        path = path.parent_path() / std::filesystem::read_symlink(path, error);
    return path;
}

// Whether `target`, which is there, can be replaced.
Done CheckReplaceable(const std::filesystem::path& target, std::filesystem::file_status status) {
    if (std::filesystem::is_directory(status))
        return tl::unexpected(std::string("Is a directory"));
    if (!std::filesystem::is_regular_file(status))
        return tl::unexpected(std::string("Not a regular file"));
    if (!Open(target, "r+b"))
        return tl::unexpected(LastReason());
    return {};
}

// Makes a file beside `target` under a name that nothing has yet.
FileHandle CreateBeside(const std::filesystem::path& target, std::filesystem::path& beside) {
    constexpr int namesMax = 100;
    FileHandle file;
    for (int number = 0; !file && number < namesMax; ++number) {
        beside = target;
        beside += ".new" + (number == 0 ? std::string() : std::to_string(number));
        file = Open(beside, "wbx");
        if (!file && errno != EEXIST)
            break;
    }
    return file;
}

Done WriteWhole(FileHandle file, std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() ||
        std::fflush(file.get()) != 0 || !ForceToDisk(file.get()) ||
        std::fclose(file.release()) != 0)
        return tl::unexpected(LastReason());
    return {};
}

}  // namespace

tl::expected<std::string, std::string> ReadTextFile(const std::filesystem::path& path,
                                                    std::size_t limit) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        return tl::unexpected(std::string("Is a directory"));
    FileHandle file = Open(path, "rb");
    if (!file)
        return tl::unexpected(LastReason());
    // Room for the whole file at once. A file that grows while it is read, or that is no regular
    // file, still comes piece by piece.
    std::string text;
    const auto size = std::filesystem::file_size(path, ignored);
    if (!ignored)
        text.reserve(std::min<std::uintmax_t>(size, limit));
    char piece[1 << 16];
    std::size_t count = 0;
    while ((count = std::fread(piece, 1, sizeof piece, file.get())) > 0) {
        text.append(piece, count);
        if (text.size() > limit)
            return tl::unexpected(std::string("File too large"));
    }
    if (std::ferror(file.get()))
        return tl::unexpected(LastReason());
    return text;
}

Done ReplaceTextFile(const std::filesystem::path& path, std::string_view text) {
    const std::filesystem::path target = LinkTarget(path);
    std::error_code error;
    const auto before = std::filesystem::status(target, error);
    if (before.type() == std::filesystem::file_type::none)
        return tl::unexpected(error.message());
    const bool there = std::filesystem::exists(before);
    if (there)
        if (Done checked = CheckReplaceable(target, before); !checked)
            return checked;
    std::filesystem::path beside;
    FileHandle file = CreateBeside(target, beside);
    if (!file)
        return tl::unexpected(LastReason());
    Done written = WriteWhole(std::move(file), text);
    if (written && there)
        std::filesystem::permissions(beside, before.permissions(), error);
    if (written)
        std::filesystem::rename(beside, target, error);
    if (written && error)
        written = tl::unexpected(error.message());
    if (!written)
        std::filesystem::remove(beside, error);
    return written;
}

}  // namespace Tamber
