#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <tl/expected.hpp>
#include <utility>

namespace Tamber::Simulator {

/// A file descriptor, closed with the object.
class FileDescriptor {
  public:
    explicit FileDescriptor(int value) : value_(value) {}
    FileDescriptor(FileDescriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
    ~FileDescriptor();

    /// -1 when there is none.
    int Value() const { return value_; }

  private:
    int value_;
};

/// The board's end of a pseudo-terminal that stands for the serial line. Every byte passes
/// unchanged in both directions. The host's end is kept open here too, so the line stays up while
/// hosts come and go; bytes a host has left unread wait for the next one.
class PseudoTerminal {
  public:
    /// The failure is which step failed and why.
    [[nodiscard]] static tl::expected<PseudoTerminal, std::string> Open();

    /// The device the host opens, for example /dev/pts/3.
    const std::string& Name() const { return name_; }

    /// The descriptor to wait on. It never blocks.
    int Descriptor() const { return board_.Value(); }

    /// What the host has written, up to the size of `buffer`; empty when nothing is there.
    std::span<const std::uint8_t> Read(std::span<std::uint8_t> buffer) const;

    /// Sends the bytes. What does not fit because no host reads is lost, as on a serial line.
    void Write(std::span<const std::uint8_t> bytes) const;

  private:
    PseudoTerminal(FileDescriptor board, FileDescriptor host, std::string name);

    FileDescriptor board_;
    FileDescriptor host_;
    std::string name_;
};

/// Makes a symbolic link to a pseudo-terminal. A link that leads to one or nowhere is taken for
/// stale and replaced; anything else of that name is left alone. The failure is the reason.
[[nodiscard]] tl::expected<void, std::string> MakeLink(const std::string& path,
                                                       const std::string& target);

/// Removes the link unless it leads elsewhere by now.
void RemoveLink(const std::string& path, const std::string& target);

}  // namespace Tamber::Simulator
