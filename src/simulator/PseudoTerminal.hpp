#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace Tamber::Simulator {

/// A file descriptor that is closed when it goes.
class FileDescriptor {
  public:
    explicit FileDescriptor(int value = -1) : value_(value) {}
    FileDescriptor(FileDescriptor&& other) noexcept;
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    ~FileDescriptor();

    /// -1 when there is none.
    [[nodiscard]] int Value() const { return value_; }

  private:
    int value_;
};

/// The board's end of a pseudo-terminal that stands for the serial line. Every byte passes
/// unchanged in both directions. The host's end is kept open here too, so the line stays up while
/// hosts come and go; bytes a host has left unread wait for the next one.
class PseudoTerminal {
  public:
    /// The pseudo-terminal, or which step failed and why.
    [[nodiscard]] static std::variant<PseudoTerminal, std::string> Open();

    /// The device the host opens, for example /dev/pts/3.
    [[nodiscard]] const std::string& Name() const { return name_; }

    /// The descriptor to wait on. It never blocks.
    [[nodiscard]] int Descriptor() const { return board_.Value(); }

    /// What the host has written, up to the size of `buffer`; nullopt when nothing is there.
    [[nodiscard]] std::optional<std::span<const std::uint8_t>> Read(
        std::span<std::uint8_t> buffer) const;

    /// Sends the bytes. What does not fit because no host reads is lost, as on a serial line.
    void Write(std::span<const std::uint8_t> bytes) const;

  private:
    PseudoTerminal(FileDescriptor board, FileDescriptor host, std::string name);

    FileDescriptor board_;
    FileDescriptor host_;
    std::string name_;
};

/// A symbolic link to a pseudo-terminal under a name of the user's choice.
class TerminalLink {
  public:
    /// Makes the link; an empty path makes none. A link that leads to a pseudo-terminal or nowhere
    /// is taken for one left behind and replaced. Anything else that bears the name is left alone
    /// and the reason given.
    [[nodiscard]] static std::variant<TerminalLink, std::string> Make(const std::string& path,
                                                                      const std::string& target);
    TerminalLink(TerminalLink&& other) noexcept;
    TerminalLink& operator=(TerminalLink&&) = delete;
    /// Removes the link, unless somebody has led it elsewhere meanwhile.
    ~TerminalLink();

  private:
    TerminalLink(std::string path, std::string target);

    std::string path_;
    std::string target_;
};

}  // namespace Tamber::Simulator
