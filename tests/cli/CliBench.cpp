#include "cli/CliBench.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

namespace Tamber::Cli {

std::string JsonFact(const std::string& json, const std::string& pointer) {
    const auto fact =
        nlohmann::ordered_json::parse(json).at(nlohmann::ordered_json::json_pointer(pointer));
    return fact.is_string() ? fact.get<std::string>() : fact.dump();
}

bool FakeMachine::Interrupted() const {
    const auto frames = std::ranges::count_if(
        desktop.record, [](const std::string& entry) { return entry.starts_with("> "); });
    return interrupted_ || (interruptAfter >= 0 && frames >= interruptAfter);
}

void FakeMachine::InterruptIn(std::chrono::milliseconds time) {
    interruption_ = desktop.NewTimer();
    interruption_->SetInterval(time);
    interruption_->OnTick([this] { interrupted_ = true; });
    interruption_->Enable();
}

CliTest::CliTest() {
    std::filesystem::copy(SAMPLE_DATA, folder.Path(), std::filesystem::copy_options::recursive);
    Socket({7, 1024, 64});
}

void CliTest::Socket(const Simulator::DeviceShape& shape, const Simulator::FaultPlan& faults) {
    engine = std::make_unique<Simulator::BoardEngine>(desktop.Clock(), shape);
    board = std::make_unique<Simulator::FaultyBoard>(*engine, desktop.Clock(), faults);
    desktop.board = board.get();
}

Ran CliTest::Run(std::vector<std::string> words, const std::string& input) {
    words.insert(words.begin(), {"-C", folder.Path()});
    desktop.record.clear();
    desktop.received.clear();
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream errors;
    const Streams streams{in, out, errors, terminal, terminal, colour};
    const auto parsed = ParseArguments(words);
    const auto* const answer = std::get_if<Answer>(&parsed);
    const ExitStatus status =
        answer ? Give(*answer, streams) : RunCommand(std::get<Arguments>(parsed), machine, streams);
    return {static_cast<int>(status), out.str(), errors.str()};
}

std::vector<std::string> CliTest::Wire() const {
    std::vector<std::string> wire;
    for (const std::string& entry : desktop.record)
        if (entry.starts_with("> "))
            wire.push_back(entry.substr(2));
    return wire;
}

}  // namespace Tamber::Cli
