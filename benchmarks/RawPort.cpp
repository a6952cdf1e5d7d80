#include "RawPort.hpp"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include "BoardProcess.hpp"

namespace Tamber::Bench {
namespace {

constexpr int Patience = 1000;  // milliseconds
constexpr std::size_t ReadReply = 17;
constexpr std::size_t WriteReply = 3;
constexpr std::size_t Identification = 10;

constexpr std::array<std::uint8_t, 2> Command(char letter) {
    return {1, static_cast<std::uint8_t>(letter)};
}

constexpr std::uint8_t High(int block) {
    return static_cast<std::uint8_t>(block * 16 / 256);
}

constexpr std::uint8_t Low(int block) {
    return static_cast<std::uint8_t>(block * 16 % 256);
}

}  // namespace

RawPort::RawPort(const std::filesystem::path& port)
    : port_(::open(port.c_str(), O_RDWR | O_NOCTTY)) {
    termios settings{};
    Require(port_ >= 0 && ::tcgetattr(port_, &settings) == 0, "cannot open " + port.string());
    ::cfmakeraw(&settings);
    ::cfsetspeed(&settings, B57600);
    Require(::tcsetattr(port_, TCSANOW, &settings) == 0, "cannot set up " + port.string());
    Write(Command('j'));  // device type 10
}

RawPort::~RawPort() {
    ::close(port_);
}

Spent RawPort::ReadBlocks(int blocks) {
    const Moment begin = Moment::Now();
    for (int block = 0; block < blocks; ++block) {
        Write(Command('R'));
        Write(std::array<std::uint8_t, 5>{4, High(block), Low(block), 0, 1});
        Read(ReadReply);
    }
    return Moment::Now().Since(begin);
}

Spent RawPort::WriteBlocks(int blocks) {
    const Moment begin = Moment::Now();
    Write(Command('W'));
    for (int block = 0; block < blocks; ++block) {
        Write(std::array<std::uint8_t, 21>{20, High(block), Low(block), 0, 8});
        Read(WriteReply);
        Require(reply_[1] == 0, "the board refused a block");
    }
    const Spent spent = Moment::Now().Since(begin);
    Write(Command('W'));
    return spent;
}

void RawPort::EndAndPause(int milliseconds) {
    Write(Command('I'));
    ::poll(nullptr, 0, milliseconds);
}

Spent RawPort::Identify(int silence) {
    const Moment begin = Moment::Now();
    Write(Command('T'));
    Read(Identification);
    ::poll(nullptr, 0, silence);
    return Moment::Now().Since(begin);
}

Spent RawPort::WaitInVain() {
    Write(Command('R'));
    const Moment begin = Moment::Now();
    pollfd wanted{port_, POLLIN, 0};
    Require(::poll(&wanted, 1, Patience) == 0, "the silent board has answered the yardstick");
    return Moment::Now().Since(begin);
}

void RawPort::Write(std::span<const std::uint8_t> bytes) const {
    Require(::write(port_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
            "cannot write to the port");
}

void RawPort::Read(std::size_t length) {
    pollfd wanted{port_, POLLIN, 0};
    for (std::size_t came = 0; came < length;) {
        Require(::poll(&wanted, 1, Patience) == 1, "the board does not answer");
        const ssize_t count = ::read(port_, reply_.data() + came, reply_.size() - came);
        Require(count > 0, "cannot read from the port");
        came += static_cast<std::size_t>(count);
    }
}

}  // namespace Tamber::Bench
