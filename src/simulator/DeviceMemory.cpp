#include "simulator/DeviceMemory.hpp"

#include <cassert>

namespace Tamber::Simulator {

DeviceMemory::DeviceMemory(const DeviceShape& shape)
    : shape_(shape),
      program_(static_cast<std::size_t>(shape.ProgramWords) * 2),
      eeprom_(static_cast<std::size_t>(shape.EepromBytes) * 2) {
    assert(shape.ProgramWords >= 0 && shape.ProgramWords <= 8192);
    assert(shape.EepromBytes >= 0 && shape.EepromBytes <= 256);
    Erase(0, EndAddress);
    if (shape.CalibrationWord && shape.ProgramWords > 0) {
        const auto last = static_cast<std::uint32_t>(shape.ProgramWords - 1) * 2;
        SetByte(last, static_cast<std::uint8_t>(*shape.CalibrationWord & 0xFF));
        SetByte(last + 1, static_cast<std::uint8_t>(*shape.CalibrationWord >> 8));
    }
}

const std::uint8_t* DeviceMemory::Find(std::uint32_t address) const {
    if (address < program_.size())
        return &program_[address];
    if (address >= IdAddress && address < IdAddress + idBlock_.size())
        return &idBlock_[address - IdAddress];
    if (address >= EepromAddress && address < EepromAddress + eeprom_.size())
        return &eeprom_[address - EepromAddress];
    return nullptr;
}

std::uint8_t DeviceMemory::BlankByte(std::uint32_t address) const {
    if (address % 2 == 0)
        return 0xFF;
    if (address < IdAddress)
        return shape_.TypeCode < 6 ? 0x0F : 0x3F;
    return address == ConfigurationAddress + 1 ? 0x3F : 0xFF;
}

std::uint8_t DeviceMemory::ByteAt(std::uint32_t address) const {
    const auto* const byte = Find(address);
    return byte != nullptr ? *byte : BlankByte(address);
}

bool DeviceMemory::SetByte(std::uint32_t address, std::uint8_t value) {
    auto* const byte = const_cast<std::uint8_t*>(Find(address));
    if (byte != nullptr)
        *byte = value;
    return byte != nullptr;
}

BlockBytes DeviceMemory::Block(std::uint32_t address) const {
    BlockBytes block{};
    for (auto& byte : block)
        byte = ByteAt(address++);
    return block;
}

std::uint32_t DeviceMemory::StreamSource(std::uint32_t address) const {
    const auto programBytes = static_cast<std::uint32_t>(program_.size());
    if (address < 2)
        return ConfigurationAddress + address;
    if (address < programBytes + 2)
        return address - 2;
    return IdAddress + (address - programBytes - 2);
}

BlockBytes DeviceMemory::StreamBlock(std::uint32_t address) const {
    const auto end = static_cast<std::uint32_t>(program_.size()) + 10;
    BlockBytes block{};
    for (auto& byte : block) {
        byte = address < end ? ByteAt(StreamSource(address)) : BlankByte(address % 2);
        ++address;
    }
    return block;
}

tl::expected<void, std::uint32_t> DeviceMemory::Write(std::uint32_t address,
                                                      std::span<const std::uint8_t> bytes) {
    for (const auto byte : bytes) {
        if (!SetByte(address, byte))
            return tl::unexpected(address);
        ++address;
    }
    return {};
}

void DeviceMemory::Erase(std::uint32_t from, std::uint32_t to) {
    for (auto address = from; address < to; ++address)
        SetByte(address, BlankByte(address));
}

}  // namespace Tamber::Simulator
