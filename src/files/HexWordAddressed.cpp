#include "files/HexWordAddressed.hpp"

#include <algorithm>

namespace Tamber {
namespace {

constexpr std::size_t LengthWithoutData = 11;
constexpr std::uint8_t HighByteMax = 0x3F;  // of a program word of 14 bits

int BytesOnLine(const HexRecord& record) {
    return record.Line.size() < LengthWithoutData
               ? 0
               : static_cast<int>((record.Line.size() - LengthWithoutData) / 2);
}

bool CountsWords(const HexRecord& record) {
    return BytesOnLine(record) == 2 * record.ByteCount;
}

// Every second byte from `first` on could be the high byte of a program word.
bool HighBytesFrom(const std::vector<HexRecord>& data, std::size_t first) {
    return std::ranges::all_of(data, [first](const HexRecord& record) {
        const int count = std::min<int>(record.ByteCount, HexRecord::DataMax);
        for (std::size_t index = first; index < static_cast<std::size_t>(count); index += 2)
            if (record.Data[index] > HighByteMax)
                return false;
        return true;
    });
}

// Each record that follows another closely begins half as far behind it as its bytes would ask for.
bool StepsByWords(const std::vector<HexRecord>& data) {
    int steps = 0;
    for (std::size_t index = 1; index < data.size(); ++index) {
        const HexRecord& before = data[index - 1];
        const int step = data[index].Address - before.Address;
        if (step > 0 && step < before.ByteCount && 2 * step != before.ByteCount)
            return false;
        if (step == before.ByteCount)
            return false;
        steps += 2 * step == before.ByteCount ? 1 : 0;
    }
    return steps > 0;
}

}  // namespace

HexUnit UnitOfRecords(const std::vector<HexRecord>& all) {
    std::vector<HexRecord> data;
    std::ranges::copy_if(all, std::back_inserter(data),
                         [](const HexRecord& record) { return record.ByteCount > 0; });
    if (data.empty())
        return HexUnit::Bytes;
    if (std::ranges::all_of(data, CountsWords))
        return HexUnit::Words;
    if (StepsByWords(data) && HighBytesFrom(data, 0) && !HighBytesFrom(data, 1))
        return HexUnit::WordsSized;
    return HexUnit::Bytes;
}

}  // namespace Tamber
