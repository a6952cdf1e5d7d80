#include "cli/SimulatedSerialControl.hpp"

#include <algorithm>
#include <sstream>
#include <utility>

#include "core/TextFile.hpp"
#include "simulator/HexFile.hpp"

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
    std::istringstream stream(*text);
    if (const auto fault = Simulator::LoadHex(stream, engine_.Memory()))
        return tl::unexpected("line " + std::to_string(fault->line) + ": " + fault->cause);
    return {};
}

tl::expected<void, std::string> SimulatedSerialControl::SaveSocket(
    const std::filesystem::path& file) const {
    std::ostringstream text;
    Simulator::SaveHex(text, engine_.Memory());
    return ReplaceTextFile(file, text.str());
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
