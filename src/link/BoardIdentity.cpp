#include "link/BoardIdentity.hpp"

namespace Tamber {
namespace {

// Codes from 0x80 up take two bytes in UTF-8.
void AppendCharacter(std::string& text, std::uint8_t code) {
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    text += static_cast<char>(0xC0 | code >> 6);
    text += static_cast<char>(0x80 | (code & 0x3F));
}

}  // namespace

BoardIdentity IdentityOf(const std::vector<std::uint8_t>& reply) {
    BoardIdentity identity;
    for (std::size_t index = 1; index <= 5; ++index)
        AppendCharacter(identity.Name, reply.at(index));
    AppendCharacter(identity.Version, reply.at(8));
    identity.Version += '.';
    AppendCharacter(identity.Version, reply.at(9));
    return identity;
}

std::string Describe(const BoardIdentity& identity) {
    return "Device: " + identity.Name + "\r\nVersion " + identity.Version;
}

std::string PortFailureText(int commPort, const std::string& reason) {
    return "COM" + std::to_string(commPort) + ", " + reason;
}

}  // namespace Tamber
