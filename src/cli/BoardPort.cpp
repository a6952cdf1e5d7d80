#include "cli/BoardPort.hpp"

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>
#include <utility>

#include "cli/SimulatedControl.hpp"
#include "cli/TracedSerialControl.hpp"
#include "core/TextFile.hpp"
#include "core/Utf8.hpp"
#include "platform/PortPath.hpp"
#include "simulator/DeviceFile.hpp"

namespace Tamber::Cli {
namespace {

using FileResult = tl::expected<void, std::string>;

// The board knows the types "a" to "z".
constexpr int TypeCodeMax = 26;

// A device with a calibration word comes with one, as from the factory.
std::optional<int> CalibrationWordOf(const DeviceRecord& device, const DeviceFact& fact) {
    if (!fact.HasCalibrationWord.value_or(false))
        return std::nullopt;
    return HasTwelveBitWords(device.TypeCode) ? 0x0C50 : 0x3450;
}

Simulator::DeviceShape ShapeOf(const DeviceRecord& device, const DeviceFact& fact) {
    return {std::clamp<int>(device.TypeCode, 1, TypeCodeMax),
            std::clamp(device.ProgramWords, 0, MemoryImage::ProgramWordsMax),
            std::clamp<int>(device.EepromBytes, 0, MemoryImage::EepromBytesMax),
            CalibrationWordOf(device, fact)};
}

std::optional<int> Number(const std::string& text) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end)
        return std::nullopt;
    return number;
}

Failure Unusable(const std::filesystem::path& file, const std::string& reason) {
    return {ExitStatus::FileUnusable, VisibleText(file.string()) + ": " + reason};
}

}  // namespace

BoardPort::BoardPort(Context& context) : context_(context), start_(context.Host.Now()) {}

Outcome BoardPort::Make() {
    Outcome made;
    if (context_.Asked.Simulate)
        made = MakeSimulated();
    else
        ChoosePort();
    context_.Facts["port"] = name_;
    return made && !context_.Asked.Trace.empty() ? AddTrace() : made;
}

void BoardPort::ChoosePort() {
    const std::string& asked = context_.Asked.Port;
    commPort_ = asked.empty() ? context_.Program.settings.CommPortNumber : Number(asked);
    path_ =
        commPort_ ? PortPath(context_.Program.AppPath, *commPort_) : std::filesystem::path(asked);
    name_ = path_.string();
    control_ = context_.Host.NewSerialControl();
}

Outcome BoardPort::MakeSimulated() {
    name_ = "the simulated board";
    simulated_.emplace([this] { return SinceStart(); },
                       ShapeOf(context_.Device(), context_.Fact()));
    control_ = std::make_unique<SimulatedControl>(*simulated_);
    return LoadSocket();
}

// A file that does not exist leaves the device new.
Outcome BoardPort::LoadSocket() {
    const std::filesystem::path& socket = context_.Asked.Socket;
    std::error_code error;
    if (socket.empty() || !std::filesystem::exists(socket, error))
        return {};
    return ReadTextFile(socket)
        .and_then([this](const std::string& text) -> FileResult {
            return Simulator::LoadDevice(text, simulated_->Memory())
                .map_error([](const Simulator::LineFailure& failure) {
                    return "line " + std::to_string(failure.Line) + ": " + failure.Cause;
                });
        })
        .map_error([&](const std::string& reason) { return Unusable(socket, reason); });
}

Outcome BoardPort::AddTrace() {
    trace_.open(context_.Asked.Trace);
    if (!trace_)
        return tl::unexpected(Unusable(context_.Asked.Trace, "cannot be written."));
    control_ = std::make_unique<TracedSerialControl>(
        std::move(control_), [this] { return SinceStart(); },
        [this](const std::string& line) { trace_ << line << std::endl; });
    return {};
}

Outcome BoardPort::SaveSocket() const {
    const std::filesystem::path& socket = context_.Asked.Socket;
    if (!simulated_ || socket.empty())
        return {};
    return ReplaceTextFile(socket, Simulator::DeviceText(simulated_->Memory()))
        .map_error([&](const std::string& reason) { return Unusable(socket, reason); });
}

}  // namespace Tamber::Cli
