#include "support/FunctionBench.hpp"

#include <algorithm>
#include <random>

namespace Tamber {
namespace {

Simulator::DeviceShape ShapeOf(const DeviceRecord& device) {
    return {device.TypeCode, std::clamp(device.ProgramWords, 0, 8192),
            std::clamp<int>(device.EepromBytes, 0, 256)};
}

std::vector<std::string> Only(const std::vector<std::string>& record, std::string_view beginning) {
    std::vector<std::string> kept;
    for (const std::string& entry : record)
        if (entry.starts_with(beginning))
            kept.push_back(entry.substr(beginning.size()));
    return kept;
}

}  // namespace

FunctionBench::FunctionBench(const DeviceRecord& deviceInSocket, Simulator::FaultPlan faults)
    : device(deviceInSocket),
      engine(desktop.Clock(), ShapeOf(device)),
      board(engine, desktop.Clock(), std::move(faults)),
      cm(desktop.NewSerialControl()),
      totmr(desktop.NewTimer()),
      tmrWait(desktop.NewTimer()),
      link(state, *cm, *totmr, desktop.Events()),
      display(desktop.record),
      run(device, image, series, link, *tmrWait, desktop.Events(), desktop.Boxes(), display) {
    desktop.board = &board;
    totmr->Disable();
    state.ProgrammerFound = true;
    image.ClearProgramMemory(device.TypeCode);
    image.ClearEeprom();
    image.ClearConfiguration();
}

std::vector<std::string> FunctionBench::Run(std::int16_t functionCode, const Regions& regions) {
    desktop.record.clear();
    run.Run(functionCode, regions);
    std::vector<std::string> record = desktop.record;
    std::erase(record, "begins");
    std::erase(record, "ends");
    return record;
}

std::vector<std::string> FunctionBench::RunQuietly(std::int16_t functionCode,
                                                   const Regions& regions) {
    std::vector<std::string> record = Run(functionCode, regions);
    std::erase_if(record, [](const std::string& entry) {
        return entry.starts_with("progress") || entry == "cleared";
    });
    return record;
}

std::vector<std::string> FunctionBench::Wire(const std::vector<std::string>& record) {
    return Only(record, "> ");
}

std::vector<std::string> FunctionBench::Ends(const std::vector<std::string>& record) {
    return Only(record, "end ");
}

void FunctionBench::FillImage(unsigned seed) {
    std::mt19937 random(seed);
    const auto fill = [&](int from, int to) {
        for (int index = from; index < to; ++index)
            image.SetByte(index, static_cast<std::uint8_t>(random()));
    };
    fill(0, 2 * run.ProgramWords());
    fill(MemoryImage::IdLocations, MemoryImage::ConfigurationWord + 2);
    fill(MemoryImage::Eeprom, MemoryImage::Eeprom + 2 * run.EepromBytes());
}

void FunctionBench::CopyImageToSocket() {
    const auto copy = [&](int from, int to) {
        for (int index = from; index < to; ++index)
            Socket().SetByte(static_cast<std::uint32_t>(index), image.Byte(index));
    };
    copy(0, 2 * run.ProgramWords());
    copy(MemoryImage::IdLocations, MemoryImage::ConfigurationWord + 2);
    copy(MemoryImage::Eeprom, MemoryImage::Eeprom + 2 * run.EepromBytes());
}

}  // namespace Tamber
