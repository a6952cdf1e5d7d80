#include "cli/CliBench.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "simulator/ReplayBoard.hpp"

namespace Tamber::Cli {

std::string JsonFact(const std::string& json, const std::string& pointer) {
    const auto fact =
        nlohmann::ordered_json::parse(json).at(nlohmann::ordered_json::json_pointer(pointer));
    return fact.is_string() ? fact.get<std::string>() : fact.dump();
}

CliBench::CliBench() {
    std::filesystem::copy(SAMPLE_DATA, folder.Path(), std::filesystem::copy_options::recursive);
    std::filesystem::current_path(folder.Path());
    Insert({7, 1024, 64});
}

void CliBench::Insert(const Simulator::DeviceShape& shape, const Simulator::Identification& who) {
    board.reset();
    engine = std::make_unique<Simulator::BoardEngine>(desktop.Clock(), shape, who);
    Spoil({});
}

void CliBench::Spoil(const Simulator::FaultPlan& faults) {
    board = std::make_unique<Simulator::FaultyBoard>(*engine, desktop.Clock(), faults);
    desktop.board = board.get();
}

void CliBench::Replay(const std::string& trace) {
    board = std::make_unique<Simulator::ReplayBoard>(desktop.Clock(),
                                                     Simulator::ReadTrace(trace).value());
    desktop.board = board.get();
}

void CliBench::LosePortAfter(std::size_t frames) {
    desktop.intrude = [this, frames] { desktop.portLost = Wire().size() > frames; };
}

void CliBench::InterruptAfter(std::size_t frames) {
    machine.interrupted = [this, frames] { return Wire().size() > frames; };  // and "open"
}

void CliBench::InterruptIn(std::chrono::milliseconds time) {
    interruption_ = desktop.NewTimer();
    interruption_->SetInterval(time);
    interruption_->OnTick([this] { machine.interrupted = [] { return true; }; });
    interruption_->Enable();
}

Ran CliBench::Run(const std::vector<std::string>& words, const std::string& input) {
    desktop.record.clear();
    desktop.received.clear();
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream errors;
    const Streams streams{in, out, errors, terminal, terminal, terminal};
    const auto parsed = ParseArguments(words);
    const ExitStatus status =
        parsed ? RunCommand(*parsed, machine, streams) : Give(parsed.error(), streams);
    return {static_cast<int>(status), out.str(), errors.str()};
}

std::vector<std::string> CliBench::Wire() const {
    std::vector<std::string> wire;
    for (const std::string& entry : desktop.record)
        if (entry.starts_with("> "))
            wire.push_back(entry.substr(2));
        else if (entry.starts_with("open "))
            wire.push_back(entry);
    return wire;
}

}  // namespace Tamber::Cli
