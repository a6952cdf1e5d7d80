#pragma once

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <span>

#include "Measure.hpp"

namespace Tamber::Bench {

/// The link's yardstick: the same bytes sent and received with nothing but the system's own calls.
class RawPort {
  public:
    /// Opens the port and makes it raw.
    explicit RawPort(const std::filesystem::path& port)
        : port_(::open(port.c_str(), O_RDWR | O_NOCTTY)) {
        termios settings{};
        Require(port_ >= 0 && ::tcgetattr(port_, &settings) == 0, "cannot open " + port.string());
        ::cfmakeraw(&settings);
        ::cfsetspeed(&settings, B57600);
        Require(::tcsetattr(port_, TCSANOW, &settings) == 0, "cannot set up " + port.string());
        Write(Command('j'));  // device type 10
    }
    RawPort(RawPort&&) = delete;
    ~RawPort() { ::close(port_); }

    /// Reads `blocks` blocks, one request at a time, and ends.
    void ReadBlocks(int blocks) {
        for (int block = 0; block < blocks; ++block) {
            Write(Command('R'));
            Write(BlockFrame<5>(block, 1));
            Read(17);
        }
        Write(Command('I'));
    }

    /// Writes `blocks` blocks in one write sequence, and ends.
    void WriteBlocks(int blocks) {
        Write(Command('W'));
        for (int block = 0; block < blocks; ++block) {
            Write(BlockFrame<21>(block, 8));
            Read(3);
            Require(reply_[1] == 0, "the board refused a block");
        }
        Write(Command('W'));
        Write(Command('I'));
    }

    /// Has the board identify itself.
    void Identify() {
        Write(Command('T'));
        Read(10);
    }

    /// Waits 1000 ms for a reply that does not come.
    void WaitInVain() {
        Write(Command('R'));
        pollfd wanted{port_, POLLIN, 0};
        Require(::poll(&wanted, 1, 1000) == 0, "the silent board has answered the yardstick");
    }

  private:
    static std::array<std::uint8_t, 2> Command(char letter) {
        return {1, static_cast<std::uint8_t>(letter)};
    }

    // A frame that names a block.
    template <std::size_t Length>
    static std::array<std::uint8_t, Length> BlockFrame(int block, std::uint8_t words) {
        return {Length - 1, static_cast<std::uint8_t>(block * 16 / 256),
                static_cast<std::uint8_t>(block * 16), 0, words};
    }

    void Write(std::span<const std::uint8_t> bytes) const {
        Require(::write(port_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
                "cannot write to the port");
    }

    void Read(std::size_t length) {
        pollfd wanted{port_, POLLIN, 0};
        for (std::size_t came = 0; came < length;) {
            Require(::poll(&wanted, 1, 1000) == 1, "the board does not answer");
            const ssize_t count = ::read(port_, reply_.data() + came, reply_.size() - came);
            Require(count > 0, "cannot read from the port");
            came += static_cast<std::size_t>(count);
        }
    }

    int port_;
    std::array<std::uint8_t, 64> reply_{};
};

}  // namespace Tamber::Bench
