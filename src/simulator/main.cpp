#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "simulator/BoardOptions.hpp"
#include "simulator/BoardService.hpp"
#include "simulator/HexFile.hpp"
#include "simulator/PacedLine.hpp"
#include "simulator/PseudoTerminal.hpp"
#include "simulator/ReplayBoard.hpp"
#include "simulator/TraceOutput.hpp"

namespace {

using namespace Tamber::Simulator;

constexpr int Failed = 1;
constexpr int WronglyCalled = 2;

int Complain(int status, const std::string& message) {
    std::cerr << "tamber-board: " << message << '\n';
    return status;
}

// Counts from the start of the program, so that the times of a trace are easy to read.
BoardClock StartedClock() {
    return [start = std::chrono::steady_clock::now()] {
        return std::chrono::duration_cast<std::chrono::microseconds>(
            std::chrono::steady_clock::now() - start);
    };
}

// What went wrong, or nothing.
std::string Load(const std::string& name, DeviceMemory& memory) {
    if (name.empty())
        return {};
    std::ifstream file(name);
    if (!file)
        return "cannot read " + name;
    const auto fault = LoadHex(file, memory);
    return fault ? name + ':' + std::to_string(fault->line) + ": " + fault->cause : std::string();
}

// Under another name first: whoever waits for the file never sees half of it.
std::string Save(const std::string& name, const DeviceMemory& memory) {
    if (name.empty())
        return {};
    const auto unfinished = name + ".part";
    std::ofstream file(unfinished);
    SaveHex(file, memory);
    file.close();
    std::error_code error;
    if (file)
        std::filesystem::rename(unfinished, name, error);
    return file && !error ? std::string() : "cannot write " + name;
}

// The board of a trace; null when the trace cannot be used, which is then said.
std::unique_ptr<ReplayBoard> Replay(const std::string& name, const BoardClock& clock,
                                    const BoardTrace& tracer) {
    std::ifstream file(name);
    std::ostringstream text;
    text << file.rdbuf();
    if (!file) {
        Complain(WronglyCalled, "cannot read " + name);
        return nullptr;
    }
    auto exchanges = ReadTrace(text.str());
    if (const auto* const fault = std::get_if<TraceFault>(&exchanges)) {
        Complain(WronglyCalled, name + ':' + std::to_string(fault->line) + ": " + fault->cause);
        return nullptr;
    }
    return std::make_unique<ReplayBoard>(
        clock, std::move(std::get<std::vector<TracedExchange>>(exchanges)), tracer);
}

int Run(const BoardOptions& options) {
    const auto clock = StartedClock();
    TraceOutput trace;
    BoardTrace tracer;
    if (options.trace)
        tracer = [&trace](std::string_view line) { trace.Add(line); };
    BoardEngine engine(clock, options.device, options.identification, tracer);
    if (const auto fault = Load(options.loadFile, engine.Memory()); !fault.empty())
        return Complain(WronglyCalled, fault);

    FaultyBoard faulty(engine, clock, options.faults, tracer);
    BoardLine* line = &engine;
    if (!options.faults.Empty())
        line = &faulty;
    std::unique_ptr<ReplayBoard> replay;
    if (!options.replayFile.empty()) {
        replay = Replay(options.replayFile, clock, tracer);
        if (!replay)
            return WronglyCalled;
        line = replay.get();
    }
    std::unique_ptr<PacedLine> paced;
    if (options.pace) {
        paced = std::make_unique<PacedLine>(*line, clock, *options.pace);
        line = paced.get();
    }

    CatchSignals();
    const auto opened = PseudoTerminal::Open();
    if (const auto* const fault = std::get_if<std::string>(&opened))
        return Complain(Failed, *fault);
    const auto& terminal = std::get<PseudoTerminal>(opened);
    const auto link = TerminalLink::Make(options.link, terminal.Name());
    if (const auto* const fault = std::get_if<std::string>(&link))
        return Complain(Failed, *fault);
    std::cout << "ready " << terminal.Name() << std::endl;

    const auto save = [&] {
        const auto fault = Save(options.saveFile, engine.Memory());
        return fault.empty() ? 0 : Complain(Failed, fault);
    };
    // The trace is written when the reply is out: it must not slow the line.
    const auto showTrace = [&trace] { trace.Show(); };
    Serve(*line, clock, terminal, save, showTrace);
    return save();
}

}  // namespace

int main(int count, char** values) {
    const std::vector<std::string_view> arguments(values + 1, values + count);
    const auto parsed = ParseOptions(arguments);
    if (const auto* const fault = std::get_if<std::string>(&parsed))
        return Complain(WronglyCalled, *fault);
    const auto& options = std::get<BoardOptions>(parsed);
    if (!options.help)
        return Run(options);
    std::cout << HelpText();
    return 0;
}
