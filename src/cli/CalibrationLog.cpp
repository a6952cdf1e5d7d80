#include "cli/CalibrationLog.hpp"

#include <fcntl.h>
#include <fmt/chrono.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <ctime>
#include <system_error>

#include "core/TextFile.hpp"

namespace Tamber::Cli {
namespace {

std::string Hex(std::uint16_t value) {
    return fmt::format("{:04X}", value);
}

std::string LineOf(const CalibrationEntry& entry) {
    return fmt::format("{:%FT%TZ},\"{}\",\"{}\",{},{}\n", fmt::gmtime(std::time(nullptr)),
                       entry.Device, entry.Board, entry.Word ? Hex(*entry.Word) : "",
                       Hex(entry.KeptBits));
}

bool WriteAll(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(file, text.data(), text.size());
        if (count < 0 && errno != EINTR)
            return false;
        text.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return fsync(file) == 0;
}

}  // namespace

tl::expected<void, std::string> AppendToLog(const std::filesystem::path& log,
                                            const CalibrationEntry& entry) {
    const auto reason = [] { return std::generic_category().message(errno); };
    const int file = open(log.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (file < 0)
        return tl::unexpected(reason());
    const off_t end = lseek(file, 0, SEEK_END);
    tl::expected<void, std::string> appended;
    if (!WriteAll(file, LineOf(entry))) {
        appended = tl::unexpected(reason());
        if (end >= 0 && ftruncate(file, end) != 0)
            appended = tl::unexpected(reason());
    }
    if (close(file) != 0 && appended)
        appended = tl::unexpected(reason());
    return appended;
}

std::optional<std::uint16_t> LastLoggedWord(const std::filesystem::path& log,
                                            const std::string& device) {
    const std::string text = ReadTextFile(log, 16 << 20).value_or("");
    const std::string name = fmt::format(",\"{}\",\"", device);
    std::optional<std::uint16_t> last;
    for (auto at = text.find(name); at != std::string::npos; at = text.find(name, at + 1)) {
        const auto board = text.find("\",", at + name.size());
        if (board == std::string::npos)
            break;
        std::uint16_t word = 0;
        const char* const digits = text.data() + board + 2;
        if (std::from_chars(digits, text.data() + text.size(), word, 16).ec == std::errc())
            last = word;
    }
    return last;
}

}  // namespace Tamber::Cli
