#include "files/HexFailure.hpp"

namespace Tamber {

std::string_view HexFailureText(HexOutcome outcome) {
    switch (outcome) {
        case HexOutcome::ChecksumError:
            return "Checksum Error in hex file!";
        case HexOutcome::NoEndRecord:
            return "No end record in hex file!";
        default:
            return {};
    }
}

}  // namespace Tamber
