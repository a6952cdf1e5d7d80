#include "link/BoardIdentity.hpp"

#include "core/Utf8.hpp"

namespace Tamber {

BoardIdentity IdentityOf(const std::vector<std::uint8_t>& reply) {
    BoardIdentity identity;
    for (std::size_t index = 1; index <= 5; ++index)
        AppendLatin1(identity.Name, reply.at(index));
    AppendLatin1(identity.Version, reply.at(8));
    identity.Version += '.';
    AppendLatin1(identity.Version, reply.at(9));
    return identity;
}

std::string Describe(const BoardIdentity& identity) {
    return "Device: " + identity.Name + "\r\nVersion " + identity.Version;
}

std::string PortFailureText(int commPort, const std::string& reason) {
    return "COM" + std::to_string(commPort) + ", " + reason;
}

}  // namespace Tamber
