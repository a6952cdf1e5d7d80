#include "support/FunctionBench.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "core/HexText.hpp"

namespace Tamber {
namespace {

Simulator::DeviceShape ShapeOf(const DeviceRecord& device) {
    return {device.TypeCode, std::clamp(device.ProgramWords, 0, 8192),
            std::clamp<int>(device.EepromBytes, 0, 256)};
}

}  // namespace

void RecordingDisplay::LineBegins(int line, const std::string& text) {
    EXPECT_LT(line, FunctionRun::MessageLines);
    record_.push_back("line " + std::to_string(line) + " " + text);
}

void RecordingDisplay::LineEnds(int line, const std::string& text, const RegionResult& result) {
    EXPECT_LT(line, FunctionRun::MessageLines);
    EXPECT_EQ(result.Function, function_);
    EXPECT_EQ(result.Outcome == RegionOutcome::Good, text.ends_with(OkText));
    EXPECT_EQ(result.Outcome == RegionOutcome::DeviceFault, text.ends_with(DeviceFaultText));
    record_.push_back("end " + std::to_string(line) + " " + text);
    if (result.Finding.Expected && result.Finding.Found)
        record_.back() +=
            " [" + HexWord(*result.Finding.Expected) + " " + HexWord(*result.Finding.Found) + "]";
}

void RecordingDisplay::ImageChanged(const Regions& regions) {
    record_.push_back(std::string("views") + (regions.ProgramMemory ? " PM" : "") +
                      (regions.Eeprom ? " EM" : "") + (regions.IdLocations ? " ID" : "") +
                      (regions.ConfigurationWord ? " CW" : ""));
}

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
    BlankImage();
}

std::vector<std::string> FunctionBench::Run(std::int16_t functionCode, const Regions& regions) {
    desktop.record.clear();
    run.Run(functionCode, regions);
    if (run.ErrorFlag)
        desktop.record.push_back("error");
    return desktop.record;
}

void FunctionBench::BlankImage() {
    image.ClearProgramMemory(device.TypeCode);
    image.ClearEeprom();
    image.ClearConfiguration();
}

std::vector<int> FunctionBench::Places() const {
    std::vector<int> places;
    const auto add = [&](int begin, int size) {
        for (int index = begin; index < begin + size; ++index)
            places.push_back(index);
    };
    add(0, 2 * run.ProgramWords());
    add(MemoryImage::IdLocations, MemoryImage::BlockBytes);
    add(MemoryImage::Eeprom, 2 * run.EepromBytes());
    return places;
}

void FunctionBench::FillImage(unsigned seed) {
    std::mt19937 random(seed);
    for (const int index : Places())
        image.SetByte(index, static_cast<std::uint8_t>(random()));
}

void FunctionBench::CopyImageToSocket() {
    for (const int index : Places())
        Socket().SetByte(static_cast<std::uint32_t>(index), image.Byte(index));
}

}  // namespace Tamber
