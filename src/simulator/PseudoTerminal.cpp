#include "simulator/PseudoTerminal.hpp"

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

namespace Tamber::Simulator {

namespace {

namespace fs = std::filesystem;

std::string Failure(const std::string& step) {
    return step + ": " + std::strerror(errno);
}

// Raw: no echo, no line editing, no translation, eight bits.
bool MakeRaw(int descriptor) {
    termios settings{};
    if (::tcgetattr(descriptor, &settings) != 0)
        return false;
    settings.c_iflag &= static_cast<tcflag_t>(
        ~(IGNBRK | BRKINT | PARMRK | ISTRIP | INLCR | IGNCR | ICRNL | IXON | IXOFF));
    settings.c_oflag &= static_cast<tcflag_t>(~OPOST);
    settings.c_lflag &= static_cast<tcflag_t>(~(ECHO | ECHONL | ICANON | ISIG | IEXTEN));
    settings.c_cflag &= static_cast<tcflag_t>(~(CSIZE | PARENB | CSTOPB));
    settings.c_cflag |= CS8 | CREAD | CLOCAL;
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    return ::tcsetattr(descriptor, TCSANOW, &settings) == 0;
}

bool LeadsNowhereOrToTerminal(const std::string& path) {
    std::error_code error;
    if (!fs::is_symlink(path, error))
        return false;
    const auto target = fs::read_symlink(path, error).string();
    return target.starts_with("/dev/pts/") || !fs::exists(path, error);
}

}  // namespace

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept
    : value_(std::exchange(other.value_, -1)) {}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
}

FileDescriptor::~FileDescriptor() {
    if (value_ >= 0)
        ::close(value_);
}

PseudoTerminal::PseudoTerminal(FileDescriptor board, FileDescriptor host, std::string name)
    : board_(std::move(board)), host_(std::move(host)), name_(std::move(name)) {}

std::variant<PseudoTerminal, std::string> PseudoTerminal::Open() {
    FileDescriptor board(::posix_openpt(O_RDWR | O_NOCTTY));
    if (board.Value() < 0 || ::grantpt(board.Value()) != 0 || ::unlockpt(board.Value()) != 0)
        return Failure("no pseudo-terminal");
    const char* const name = ::ptsname(board.Value());
    if (name == nullptr)
        return Failure("the pseudo-terminal has no name");
    FileDescriptor host(::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (host.Value() < 0 || !MakeRaw(host.Value()))
        return Failure(std::string("cannot set up ") + name);
    if (::fcntl(board.Value(), F_SETFL, O_NONBLOCK) != 0 ||
        ::fcntl(board.Value(), F_SETFD, FD_CLOEXEC) != 0)
        return Failure(std::string("cannot set up ") + name);
    return PseudoTerminal(std::move(board), std::move(host), name);
}

std::optional<std::span<const std::uint8_t>> PseudoTerminal::Read(
    std::span<std::uint8_t> buffer) const {
    const auto count = ::read(board_.Value(), buffer.data(), buffer.size());
    if (count <= 0)
        return std::nullopt;
    return buffer.first(static_cast<std::size_t>(count));
}

void PseudoTerminal::Write(std::span<const std::uint8_t> bytes) const {
    while (!bytes.empty()) {
        const auto count = ::write(board_.Value(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

TerminalLink::TerminalLink(std::string path, std::string target)
    : path_(std::move(path)), target_(std::move(target)) {}

TerminalLink::TerminalLink(TerminalLink&& other) noexcept
    : path_(std::exchange(other.path_, {})), target_(std::move(other.target_)) {}

std::variant<TerminalLink, std::string> TerminalLink::Make(const std::string& path,
                                                           const std::string& target) {
    if (path.empty())
        return TerminalLink({}, {});
    if (LeadsNowhereOrToTerminal(path))
        ::unlink(path.c_str());
    if (::symlink(target.c_str(), path.c_str()) != 0)
        return Failure("cannot make the link " + path);
    // An absolute path, so that the link is found again whatever becomes of the directory we are
    // in.
    return TerminalLink(fs::absolute(path).string(), target);
}

TerminalLink::~TerminalLink() {
    std::error_code error;
    if (!path_.empty() && fs::read_symlink(path_, error) == target_)
        ::unlink(path_.c_str());
}

}  // namespace Tamber::Simulator
