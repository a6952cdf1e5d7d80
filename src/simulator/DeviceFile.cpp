#include "simulator/DeviceFile.hpp"

#include <algorithm>

#include "files/HexFile.hpp"
#include "files/HexSave.hpp"

namespace Tamber::Simulator {
namespace {

std::string CauseOf(HexFault fault) {
    switch (fault) {
        case HexFault::ChecksumError:
            return "wrong checksum";
        case HexFault::NoEndRecord:
            return "no end record";
        case HexFault::AddressError:
            return "no record with an address";
        case HexFault::TooManyBytes:
            return "too many bytes";
        default:
            return "too many lines";
    }
}

bool ShiftsAddresses(const HexRecord& record) {
    constexpr int extendedSegment = 2;
    constexpr int extendedLinear = 4;
    return (record.Type == extendedSegment || record.Type == extendedLinear) &&
           std::ranges::any_of(record.Data, [](auto byte) { return byte != 0; });
}

}  // namespace

tl::expected<void, LineFailure> LoadDevice(std::string_view text, DeviceMemory& memory) {
    const auto records = ReadHexRecords(text);
    if (!records)
        return tl::unexpected(LineFailure{records.error().Line, CauseOf(records.error().Fault)});
    if (const auto shifting = std::ranges::find_if(*records, ShiftsAddresses);
        shifting != records->end())
        return tl::unexpected(LineFailure{static_cast<int>(shifting - records->begin()) + 1,
                                          "an address above FFFF"});
    for (const auto& record : *records)
        for (int i = 0; record.Type == HexRecord::DataType && i < record.ByteCount; ++i)
            memory.SetByte(static_cast<std::uint32_t>(record.Address + i),
                           record.Data[static_cast<std::size_t>(i)]);
    return {};
}

std::string DeviceText(const DeviceMemory& memory) {
    MemoryImage image;
    for (std::uint32_t address = 0; address < DeviceMemory::EndAddress; ++address)
        image.SetByte(static_cast<int>(address), memory.ByteAt(address));
    return HexFileText(image, memory.Shape().ProgramWords);
}

}  // namespace Tamber::Simulator
