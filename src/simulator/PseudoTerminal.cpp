#include "simulator/PseudoTerminal.hpp"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace Tamber::Simulator {
namespace {

namespace fs = std::filesystem;

tl::unexpected<std::string> Failure(const std::string& step) {
    return tl::unexpected(step + ": " + std::strerror(errno));
}

// No echo, no line editing, no translation, eight bits.
bool MakeRaw(int descriptor) {
    termios settings{};
    if (::tcgetattr(descriptor, &settings) != 0)
        return false;
    ::cfmakeraw(&settings);
    settings.c_iflag &= ~static_cast<tcflag_t>(IXOFF);
    settings.c_cflag |= CREAD | CLOCAL;
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

FileDescriptor::~FileDescriptor() {
    if (value_ >= 0)
        ::close(value_);
}

PseudoTerminal::PseudoTerminal(FileDescriptor board, FileDescriptor host, std::string name)
    : board_(std::move(board)), host_(std::move(host)), name_(std::move(name)) {}

tl::expected<PseudoTerminal, std::string> PseudoTerminal::Open() {
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

std::span<const std::uint8_t> PseudoTerminal::Read(std::span<std::uint8_t> buffer) const {
    const auto count = ::read(board_.Value(), buffer.data(), buffer.size());
    return buffer.first(count > 0 ? static_cast<std::size_t>(count) : 0);
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

tl::expected<void, std::string> MakeLink(const std::string& path, const std::string& target) {
    if (LeadsNowhereOrToTerminal(path))
        ::unlink(path.c_str());
    if (::symlink(target.c_str(), path.c_str()) != 0)
        return Failure("cannot make the link " + path);
    return {};
}

void RemoveLink(const std::string& path, const std::string& target) {
    std::error_code error;
    if (fs::read_symlink(path, error) == target)
        ::unlink(path.c_str());
}

}  // namespace Tamber::Simulator
