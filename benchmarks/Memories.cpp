#include "Memories.hpp"

#include <cstdint>
#include <vector>

#include "BoardProcess.hpp"

namespace Tamber::Bench {

std::string HexText10000() {
    std::vector<std::uint8_t> memory(0x10000);
    std::uint32_t random = 1;
    for (std::uint8_t& byte : memory) {
        random = random * 1'664'525 + 1'013'904'223;
        byte = static_cast<std::uint8_t>(random >> 24);
    }
    std::string text;
    for (unsigned line = 0; line < 9'999; ++line)
        AppendHex(text, memory.data(), line * 0x950 % 0x10000, 16);
    return text.append(EndRecord);
}

void FillProgramMemory(MemoryImage& image) {
    for (int index = 0; index < 2 * MemoryImage::ProgramWordsMax; ++index)
        image.SetByte(index, static_cast<std::uint8_t>(index * 37 >> 3 & 0x3F));
}

Memories::Memories() {
    Require(ReadHex(Text, Plain), "the yardstick does not take the HEX text");
    for (int index = 0; index < 0x10000; ++index)
        Image.SetByte(index, Plain[static_cast<std::size_t>(index)]);
}

}  // namespace Tamber::Bench
