#include "cli/SimulatedSerialControl.hpp"

#include <algorithm>
#include <utility>

#include "core/TextFile.hpp"
#include "simulator/DeviceFile.hpp"

namespace Tamber::Cli {
namespace {

// The board knows the types "a" to "z".
constexpr int TypeCodeMax = 26;

Simulator::DeviceShape ShapeOf(const DeviceRecord& device) {
    return {std::clamp<int>(device.TypeCode, 1, TypeCodeMax),
            std::clamp(device.ProgramWords, 0, MemoryImage::ProgramWordsMax),
            std::clamp<int>(device.EepromBytes, 0, MemoryImage::EepromBytesMax)};
}

}  // namespace

SimulatedSerialControl::SimulatedSerialControl(const DeviceRecord& device,
                                               Simulator::BoardClock clock)
    : engine_(std::move(clock), ShapeOf(device)) {}

tl::expected<void, std::string> SimulatedSerialControl::LoadSocket(
    const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::exists(file, error))
        return {};
    const auto text = ReadTextFile(file);
    if (!text)
        return tl::unexpected(text.error());
    return Simulator::LoadDevice(*text, engine_.Memory())
        .map_error([](const Simulator::LineFailure& failure) {
            return "line " + std::to_string(failure.Line) + ": " + failure.Cause;
        });
}

tl::expected<void, std::string> SimulatedSerialControl::SaveSocket(
    const std::filesystem::path& file) const {
    return ReplaceTextFile(file, Simulator::DeviceText(engine_.Memory()));
}

tl::expected<void, std::string> SimulatedSerialControl::PortOpen(const std::filesystem::path&) {
    return {};
}

void SimulatedSerialControl::Output(std::span<const std::uint8_t> bytes) {
    engine_.Receive(bytes);
    engine_.Take(received_);
}

int SimulatedSerialControl::InBufferCount() {
    return static_cast<int>(received_.size());
}

void SimulatedSerialControl::Input(std::vector<std::uint8_t>& bytes) {
    bytes = std::exchange(received_, {});
}

}  // namespace Tamber::Cli
