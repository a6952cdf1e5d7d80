#include "simulator/HexFile.hpp"

#include <algorithm>
#include <numeric>
#include <variant>
#include <vector>

#include "simulator/HexText.hpp"

namespace Tamber::Simulator {

namespace {

using Bytes = std::vector<std::uint8_t>;

enum RecordType : std::uint8_t { Data = 0, End = 1, ExtendedSegment = 2, ExtendedLinear = 4 };

struct HexRecord {
    std::uint16_t address = 0;
    std::uint8_t type = Data;
    Bytes data;
};

std::uint8_t Sum(const Bytes& bytes) {
    return static_cast<std::uint8_t>(std::accumulate(bytes.begin(), bytes.end(), 0u) & 0xFF);
}

std::optional<Bytes> PairsOfDigits(std::string_view text) {
    Bytes bytes;
    for (; !text.empty(); text.remove_prefix(std::min<std::size_t>(2, text.size()))) {
        const auto byte = ByteFromText(text.substr(0, 2));
        if (!byte)
            return std::nullopt;
        bytes.push_back(*byte);
    }
    return bytes;
}

bool ShiftsAddresses(const HexRecord& record) {
    return (record.type == ExtendedSegment || record.type == ExtendedLinear) &&
           std::any_of(record.data.begin(), record.data.end(), [](auto byte) { return byte != 0; });
}

// The record, or why it is none.
std::variant<HexRecord, std::string> ParseRecord(std::string_view line) {
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    if (line.empty() || line.front() != ':')
        return "no colon at the start";
    const auto bytes = PairsOfDigits(line.substr(1));
    if (!bytes)
        return "something other than pairs of hexadecimal digits";
    if (bytes->size() < 5 || bytes->size() != bytes->front() + std::size_t{5})
        return "not as many bytes as the record's count says";
    if (Sum(*bytes) != 0)
        return "wrong checksum";
    HexRecord record{static_cast<std::uint16_t>((*bytes)[1] << 8 | (*bytes)[2]), (*bytes)[3],
                     Bytes(bytes->begin() + 4, bytes->end() - 1)};
    if (ShiftsAddresses(record))
        return "an address above FFFF";
    return record;
}

void WriteRecord(std::ostream& file, const HexRecord& record) {
    Bytes bytes{static_cast<std::uint8_t>(record.data.size()),
                static_cast<std::uint8_t>(record.address >> 8),
                static_cast<std::uint8_t>(record.address & 0xFF), record.type};
    bytes.insert(bytes.end(), record.data.begin(), record.data.end());
    bytes.push_back(static_cast<std::uint8_t>(-Sum(bytes) & 0xFF));
    file << ':';
    for (const auto byte : bytes)
        file << ByteText(byte);
    file << '\n';
}

void WriteRegion(std::ostream& file, const DeviceMemory& memory, std::uint32_t begin, int size) {
    const auto end = begin + static_cast<std::uint32_t>(size);
    for (auto address = begin; address < end; address += 16) {
        const auto block = memory.Block(address);
        const auto length = std::min<std::uint32_t>(16, end - address);
        WriteRecord(file, {static_cast<std::uint16_t>(address), Data,
                           Bytes(block.begin(), block.begin() + length)});
    }
}

}  // namespace

std::optional<HexFault> LoadHex(std::istream& file, DeviceMemory& memory) {
    DeviceMemory loaded = memory;
    int number = 1;
    for (std::string line; std::getline(file, line); ++number) {
        const auto parsed = ParseRecord(line);
        if (const auto* cause = std::get_if<std::string>(&parsed))
            return HexFault{number, *cause};
        const auto& record = std::get<HexRecord>(parsed);
        if (record.type == End) {
            memory = loaded;
            return std::nullopt;
        }
        for (std::size_t i = 0; record.type == Data && i < record.data.size(); ++i)
            loaded.SetByte(record.address + static_cast<std::uint32_t>(i), record.data[i]);
    }
    return HexFault{number, "no end record"};
}

void SaveHex(std::ostream& file, const DeviceMemory& memory) {
    WriteRegion(file, memory, 0, 2 * memory.Shape().programWords);
    WriteRegion(file, memory, DeviceMemory::IdAddress, 16);
    WriteRegion(file, memory, DeviceMemory::EepromAddress, 2 * memory.Shape().eepromBytes);
    WriteRecord(file, {0, End, {}});
}

}  // namespace Tamber::Simulator
