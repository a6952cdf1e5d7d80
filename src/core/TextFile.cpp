#include "core/TextFile.hpp"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

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

FileHandle Open(const std::filesystem::path& path, bool forWriting) {
#ifdef _WIN32
    return FileHandle(_wfopen(path.c_str(), forWriting ? L"wb" : L"rb"));
#else
    return FileHandle(std::fopen(path.c_str(), forWriting ? "wb" : "rb"));
#endif
}

using Contents = Result<std::string, std::string>;

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

std::optional<std::string> WriteWhole(const std::filesystem::path& path, std::string_view text) {
    FileHandle file = Open(path, true);
    if (!file)
        return LastReason();
    if (std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() ||
        std::fflush(file.get()) != 0 || !ForceToDisk(file.get()))
        return LastReason();
    if (std::fclose(file.release()) != 0)
        return LastReason();
    return std::nullopt;
}

}  // namespace

Contents ReadTextFile(const std::filesystem::path& path, std::size_t limit) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        return Contents::Failed("Is a directory");
    FileHandle file = Open(path, false);
    if (!file)
        return Contents::Failed(LastReason());
    std::string text;
    char piece[1 << 16];
    std::size_t count = 0;
    while ((count = std::fread(piece, 1, sizeof piece, file.get())) > 0) {
        text.append(piece, count);
        if (text.size() > limit)
            return Contents::Failed("File too large");
    }
    if (std::ferror(file.get()))
        return Contents::Failed(LastReason());
    return Contents::Success(std::move(text));
}

std::optional<std::string> ReplaceTextFile(const std::filesystem::path& path,
                                           std::string_view text) {
    std::error_code error;
    std::filesystem::path target = std::filesystem::weakly_canonical(path, error);
    if (error)
        target = path;
    std::filesystem::path beside = target;
    beside += ".new";
    if (auto reason = WriteWhole(beside, text)) {
        std::filesystem::remove(beside, error);
        return reason;
    }
    const auto before = std::filesystem::status(target, error);
    if (std::filesystem::is_regular_file(before))
        std::filesystem::permissions(beside, before.permissions(), error);
    std::filesystem::rename(beside, target, error);
    if (!error)
        return std::nullopt;
    std::error_code ignored;
    std::filesystem::remove(beside, ignored);
    return error.message();
}

}  // namespace Tamber
