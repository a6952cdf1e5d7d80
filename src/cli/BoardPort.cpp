#include "cli/BoardPort.hpp"

#include <fstream>
#include <nlohmann/json.hpp>
#include <utility>

#include "cli/PortChoice.hpp"
#include "cli/SimulatedSerialControl.hpp"
#include "cli/TracedSerialControl.hpp"

namespace Tamber::Cli {

BoardPort::BoardPort(Context& context) : context_(context), start_(context.Host.Now()) {}

BoardPort::~BoardPort() = default;

Outcome BoardPort::Make() {
    if (context_.Asked.Simulate) {
        if (auto outcome = MakeSimulated(); !outcome.Done())
            return outcome;
    } else {
        const PortChoice choice = ChoosePort(context_.Asked.Port, context_.Program);
        name_ = choice.Path.string();
        commPort_ = choice.CommPort;
        path_ = choice.Path;
        control_ = context_.Host.NewSerialControl();
    }
    context_.Facts["port"] = name_;
    return context_.Asked.Trace.empty() ? Outcome{} : AddTrace();
}

Outcome BoardPort::MakeSimulated() {
    name_ = "the simulated board";
    auto simulated = std::make_unique<SimulatedSerialControl>(context_.Device(),
                                                              [this] { return SinceStart(); });
    simulated_ = simulated.get();
    control_ = std::move(simulated);
    const std::filesystem::path& socket = context_.Asked.Socket;
    if (!socket.empty())
        if (const auto loaded = simulated_->LoadSocket(socket); !loaded)
            return Failed(ExitStatus::FileUnusable, socket.string() + ": " + loaded.error());
    return {};
}

Outcome BoardPort::AddTrace() {
    trace_ = std::make_unique<std::ofstream>(context_.Asked.Trace);
    if (!*trace_)
        return Failed(ExitStatus::FileUnusable,
                      context_.Asked.Trace.string() + ": cannot be written.");
    control_ = std::make_unique<TracedSerialControl>(
        std::move(control_), [this] { return SinceStart(); },
        [this](const std::string& line) { *trace_ << line << std::endl; });
    return {};
}

Outcome BoardPort::SaveSocket() const {
    const std::filesystem::path& socket = context_.Asked.Socket;
    if (!simulated_ || socket.empty())
        return {};
    if (const auto saved = simulated_->SaveSocket(socket); !saved)
        return Failed(ExitStatus::FileUnusable, socket.string() + ": " + saved.error());
    return {};
}

}  // namespace Tamber::Cli
