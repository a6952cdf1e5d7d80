#include "ui/DumpText.hpp"

#include <algorithm>

#include "core/Blocks.hpp"
#include "core/HexText.hpp"

namespace Tamber {
namespace {

constexpr int EepromBytesInRow = 16;
constexpr int ProgramRowsInRegion = MemoryImage::ProgramWordsMax / WordsInRow;
constexpr std::size_t ProgramRowLength = 55;
constexpr std::size_t EepromRowLength = 71;

char Printable(std::uint8_t byte) {
    return byte < 32 || byte >= 128 ? '.' : static_cast<char>(byte);
}

void AppendProgramRow(std::string& text, const MemoryImage& image, int row) {
    const auto bytes = image.Bytes(row * 2 * WordsInRow, 2 * WordsInRow);
    AppendHexWord(text, static_cast<std::uint32_t>(row * WordsInRow));
    text += '=';
    for (std::size_t index = 0; index < bytes.size(); index += 2) {
        AppendHexByte(text, bytes[index + 1]);
        AppendHexByte(text, bytes[index]);
        text += ' ';
    }
    for (std::size_t index = 0; index < bytes.size(); index += 2)
        text += Printable(bytes[index]);
    text += "\r\n";
}

void AppendEepromRow(std::string& text, const MemoryImage& image, int row) {
    const auto bytes =
        image.Bytes(MemoryImage::Eeprom + row * 2 * EepromBytesInRow, 2 * EepromBytesInRow);
    AppendHexWord(text, static_cast<std::uint32_t>(row * EepromBytesInRow));
    text += '=';
    for (std::size_t index = 0; index < bytes.size(); index += 2) {
        AppendHexByte(text, bytes[index]);
        text += ' ';
    }
    for (std::size_t index = 0; index < bytes.size(); index += 2)
        text += Printable(bytes[index]);
    text += "\r\n";
}

std::string Heading(std::size_t blanksBeforeHex, std::size_t blanksAfterHex) {
    return "ADDR" + std::string(blanksBeforeHex, ' ') + "HEX" + std::string(blanksAfterHex, ' ') +
           "ASCII\r\n";
}

}  // namespace

std::string ProgramDumpHeader() {
    return Heading(19, 20);
}

std::string EepromDumpHeader() {
    return Heading(23, 28);
}

std::string ProgramDump(const MemoryImage& image, int topRow, int rows) {
    std::string text;
    text.reserve(static_cast<std::size_t>(rows) * ProgramRowLength);
    const int end = std::min(topRow + rows, ProgramRowsInRegion);
    for (int row = std::max(topRow, 0); row < end; ++row)
        AppendProgramRow(text, image, row);
    return text;
}

int ProgramDumpRowsOf(int programWords) {
    return BlockCount(std::clamp(programWords, 0, MemoryImage::ProgramWordsMax));
}

int ProgramDumpTopRowMax(int programWords, int rows) {
    return std::max(ProgramDumpRowsOf(programWords) - rows, 0);
}

std::string EepromDump(const MemoryImage& image, int eepromBytes) {
    std::string text;
    const int rows = std::clamp(eepromBytes / EepromBytesInRow, 0, EepromDumpRowsMax);
    text.reserve(static_cast<std::size_t>(rows) * EepromRowLength);
    for (int row = 0; row < rows; ++row)
        AppendEepromRow(text, image, row);
    return text;
}

}  // namespace Tamber
