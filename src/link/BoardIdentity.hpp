#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Tamber {

/// How a board has identified itself, in UTF-8.
struct BoardIdentity {
    std::string Name;     ///< five characters
    std::string Version;  ///< two characters around a point
};

/// Takes an identification reply of 10 bytes apart. Each byte is the character with that code.
BoardIdentity IdentityOf(const std::vector<std::uint8_t>& reply);

/// "Device: ", the name, CR LF, "Version ", the version.
std::string Describe(const BoardIdentity& identity);

/// The message for a port COM`commPort` that cannot be opened, and its title.
std::string PortFailureText(int commPort, const std::string& reason);
constexpr char PortFailureTitle[] = "Communication Port Error";

/// The message for a board that does not answer, and its title.
constexpr char NoReplyText[] = "Communication Error!";
constexpr char NoReplyTitle[] = "Device Error";

}  // namespace Tamber
