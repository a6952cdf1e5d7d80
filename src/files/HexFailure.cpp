#include "files/HexFailure.hpp"

namespace Tamber {

std::string_view HexFailureText(HexFault fault) {
    switch (fault) {
        case HexFault::ChecksumError:
            return "Checksum Error in hex file!";
        case HexFault::NoEndRecord:
            return "No end record in hex file!";
        default:
            return {};
    }
}

}  // namespace Tamber
