#include "link/LineFinding.hpp"

namespace Tamber {

std::string Describe(const LineFinding& finding) {
    if (finding.WrongCount)
        return "a reply of 17 bytes says that it has " + std::to_string(*finding.WrongCount);
    return std::to_string(finding.UnaskedBytes) + (finding.UnaskedBytes == 1 ? " byte" : " bytes") +
           " came that nobody asked for";
}

}  // namespace Tamber
