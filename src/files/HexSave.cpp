#include "files/HexSave.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/TextFile.hpp"

namespace Tamber {
namespace {

constexpr std::string_view EndRecord = ":00000001FF\r\n";
constexpr std::size_t RecordLength = 45;  // with CR LF
constexpr int EepromRecords = 2 * MemoryImage::EepromBytesMax / MemoryImage::BlockBytes;

using DigitPair = std::array<char, 2>;

constexpr std::array<DigitPair, 256> DigitPairs = [] {
    constexpr char digits[] = "0123456789ABCDEF";
    std::array<DigitPair, 256> pairs{};
    for (std::size_t value = 0; value < pairs.size(); ++value)
        pairs[value] = {digits[value / 16], digits[value % 16]};
    return pairs;
}();

// Writes records one after the other into reserved room and keeps each one's sum.
class RecordWriter {
  public:
    explicit RecordWriter(char* next) : next_(next) {}

    void Record(const MemoryImage& image, int address) {
        *next_++ = ':';
        sum_ = 0;
        Byte(MemoryImage::BlockBytes);
        Byte(static_cast<unsigned>(address) >> 8);
        Byte(static_cast<unsigned>(address) & 0xFF);
        Byte(0);  // a data record
        for (const std::uint8_t byte : image.Block(address))
            Byte(byte);
        Byte((0u - sum_) & 0xFF);
        *next_++ = '\r';
        *next_++ = '\n';
    }

  private:
    void Byte(unsigned value) {
        next_ = std::ranges::copy(DigitPairs[value], next_).out;
        sum_ += value;
    }

    char* next_;
    unsigned sum_ = 0;
};

}  // namespace

std::string HexFileText(const MemoryImage& image, int programWords) {
    constexpr int wordsInRecord = MemoryImage::BlockBytes / 2;
    const int words = std::clamp(programWords, 0, MemoryImage::ProgramWordsMax);
    const int programRecords = (words + wordsInRecord - 1) / wordsInRecord;
    const auto records = static_cast<std::size_t>(programRecords + 1 + EepromRecords);

    std::string text;
    text.reserve(records * RecordLength + EndRecord.size());
    text.resize(records * RecordLength);
    RecordWriter writer(text.data());
    for (int record = 0; record < programRecords; ++record)
        writer.Record(image, record * MemoryImage::BlockBytes);
    writer.Record(image, MemoryImage::IdLocations);
    for (int record = 0; record < EepromRecords; ++record)
        writer.Record(image, MemoryImage::Eeprom + record * MemoryImage::BlockBytes);
    return text += EndRecord;
}

tl::expected<void, std::string> SaveHexFile(const std::filesystem::path& file,
                                            const MemoryImage& image, int programWords) {
    return ReplaceTextFile(file, HexFileText(image, programWords));
}

}  // namespace Tamber
