#include "files/HexWordAddressing.hpp"

namespace Tamber {

void HexWordAddressing::Add(const HexRecord& record) {
    if (record.ByteCount == 0)
        return;
    allCountWords_ = allCountWords_ && record.CountsWords();
    if (before_) {
        const int step = record.Address - before_->Address;
        if (2 * step == before_->ByteCount)
            steps_ = true;
        else if (step > 0 && step <= before_->ByteCount)
            byteSteps_ = true;
    }
    before_ = {record.Address, record.ByteCount};
    constexpr std::uint8_t highByteMax = 0x3F;  // of a program word of 14 bits
    for (std::size_t index = 0; index < static_cast<std::size_t>(record.ByteCount); ++index)
        if (record.Data[index] > highByteMax)
            (index % 2 == 0 ? highBytesFirst_ : highBytesSecond_) = false;
}

}  // namespace Tamber
