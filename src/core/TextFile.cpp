#include "core/TextFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <system_error>
#include <utility>

namespace Tamber {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

// `mode` as for fopen; with an "x" in it, a file that exists is not opened.
FileHandle Open(const std::filesystem::path& path, const char* mode) {
    return FileHandle(std::fopen(path.c_str(), mode));
}

using Done = tl::expected<void, std::string>;

std::string LastReason() {
    return std::generic_category().message(errno);
}

bool ForceToDisk(std::FILE* file) {
    return fsync(fileno(file)) == 0;
}

// The file that a chain of links leads to, whether or not it exists.
std::filesystem::path LinkTarget(std::filesystem::path path) {
    constexpr int linksMax = 40;  // as many as the system itself follows
    std::error_code error;
    for (int links = 0; links < linksMax && std::filesystem::is_symlink(path, error); ++links)
        path = path.parent_path() / std::filesystem::read_symlink(path, error);
    return path;
}

// Anything but a regular file is refused; what is not there passes.
Done CheckKind(std::filesystem::file_status status) {
    if (std::filesystem::is_directory(status))
        return tl::unexpected(std::string("Is a directory"));
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        return tl::unexpected(std::string("Not a regular file"));
    return {};
}

tl::expected<FileHandle, std::string> OpenToRead(const std::filesystem::path& path) {
    std::error_code ignored;
    return CheckKind(std::filesystem::status(path, ignored))
        .and_then([&]() -> tl::expected<FileHandle, std::string> {
            FileHandle file = Open(path, "rb");
            if (!file)
                return tl::unexpected(LastReason());
            return file;
        });
}

// Whether a file can be made in the folder of `target`.
Done CheckFolder(const std::filesystem::path& target) {
    const std::filesystem::path folder = target.parent_path();
    if (access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) != 0)
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
    if (!file || std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() ||
        std::fflush(file.get()) != 0 || !ForceToDisk(file.get()) ||
        std::fclose(file.release()) != 0)
        return tl::unexpected(LastReason());
    return {};
}

// The file keeps all its names. After a failure its old text is put back, as far as that goes.
Done WriteInPlace(const std::filesystem::path& target, std::string_view text, bool there) {
    const auto old = there ? ReadTextFile(target, std::numeric_limits<std::size_t>::max())
                           : tl::expected<std::string, std::string>();
    Done written = WriteWhole(Open(target, "wb"), text);
    std::error_code ignored;
    if (!written && !there)
        std::filesystem::remove(target, ignored);
    else if (!written && old)
        (void)WriteWhole(Open(target, "wb"), *old);
    return written;
}

// Gives `beside` what `target`, which it is to replace, has besides its text: owner, permissions
// and extended attributes, as far as the system lets it. The text comes after that, so that nobody
// reads it who could not read the old one.
void TakeOver(const std::filesystem::path& target, const std::filesystem::path& beside) {
    struct stat old {};
    if (stat(target.c_str(), &old) != 0)
        return;
    if (chown(beside.c_str(), old.st_uid, old.st_gid) != 0)
        (void)!chown(beside.c_str(), static_cast<uid_t>(-1), old.st_gid);
    (void)!chmod(beside.c_str(), old.st_mode & 07777U);
    char names[4096];
    const ssize_t length = listxattr(target.c_str(), names, sizeof names);
    for (const char* name = names; name < names + length; name += std::strlen(name) + 1) {
        char value[4096];
        if (const ssize_t size = getxattr(target.c_str(), name, value, sizeof value); size >= 0)
            (void)setxattr(beside.c_str(), name, value, static_cast<std::size_t>(size), 0);
    }
}

// A new name survives a power failure only once its folder is on the disk.
void ForceFolderToDisk(const std::filesystem::path& target) {
    const std::filesystem::path folder = target.parent_path();
    const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (handle < 0)
        return;
    fsync(handle);
    close(handle);
}

Done WriteBeside(FileHandle file, const std::filesystem::path& beside,
                 const std::filesystem::path& target, std::string_view text) {
    TakeOver(target, beside);
    std::error_code error;
    Done written = WriteWhole(std::move(file), text);
    if (written)
        std::filesystem::rename(beside, target, error);
    if (written && error)
        written = tl::unexpected(error.message());
    if (written)
        ForceFolderToDisk(target);
    else
        std::filesystem::remove(beside, error);
    return written;
}

// A file that is written in place is lost when there is no room, and a full folder has none.
bool FolderCannotBeWritten(int reason) {
    return reason == EACCES || reason == EPERM || reason == EROFS || reason == ENAMETOOLONG;
}

}  // namespace

std::size_t CountLineEnds(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n') +
                                    std::ranges::count(text, '\r'));
}

tl::expected<std::string, std::string> ReadTextFile(const std::filesystem::path& path,
                                                    std::size_t limit, std::size_t lineEnds) {
    auto opened = OpenToRead(path);
    if (!opened)
        return tl::unexpected(opened.error());
    const FileHandle file = std::move(*opened);
    // Room for the whole file at once. A file that grows while it is read still comes piece by
    // piece.
    std::string text;
    std::error_code ignored;
    const auto size = std::filesystem::file_size(path, ignored);
    if (!ignored)
        text.reserve(std::min<std::uintmax_t>(size, limit));
    char piece[1 << 16];
    std::size_t count = 0;
    std::size_t ends = 0;
    while (ends < lineEnds && (count = std::fread(piece, 1, sizeof piece, file.get())) > 0) {
        text.append(piece, count);
        ends += CountLineEnds({piece, count});
        if (text.size() > limit)
            return tl::unexpected(std::string("File too large"));
    }
    if (std::ferror(file.get()))
        return tl::unexpected(LastReason());
    return text;
}

Done CheckReadable(const std::filesystem::path& path) {
    return OpenToRead(path).map([](const FileHandle&) {});
}

Done CheckReplaceable(const std::filesystem::path& path) {
    const std::filesystem::path target = LinkTarget(path);
    std::error_code error;
    const auto status = std::filesystem::status(target, error);
    if (status.type() == std::filesystem::file_type::none)
        return tl::unexpected(error.message());
    if (!std::filesystem::exists(status))
        return CheckFolder(target);
    return CheckKind(status).and_then([&]() -> Done {
        if (!Open(target, "r+b"))
            return tl::unexpected(LastReason());
        return {};
    });
}

Done ReplaceTextFile(const std::filesystem::path& path, std::string_view text) {
    if (Done checked = CheckReplaceable(path); !checked)
        return checked;
    const std::filesystem::path target = LinkTarget(path);
    std::error_code error;
    const bool there = std::filesystem::exists(target, error);
    const bool otherNames = there && std::filesystem::hard_link_count(target, error) > 1;
    std::filesystem::path beside;
    FileHandle file = otherNames ? FileHandle() : CreateBeside(target, beside);
    if (file)
        return WriteBeside(std::move(file), beside, target, text);
    if (!otherNames && !FolderCannotBeWritten(errno))
        return tl::unexpected(LastReason());
    return WriteInPlace(target, text, there);
}

}  // namespace Tamber
