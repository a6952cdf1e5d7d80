#include <chrono>
#include <filesystem>
#include <iostream>
#include <optional>

#include "core/TextFile.hpp"
#include "simulator/BoardOptions.hpp"
#include "simulator/BoardService.hpp"
#include "simulator/DeviceFile.hpp"
#include "simulator/PacedLine.hpp"
#include "simulator/PseudoTerminal.hpp"
#include "simulator/ReplayBoard.hpp"
#include "simulator/TraceOutput.hpp"

namespace {

using namespace Tamber;
using namespace Tamber::Simulator;

constexpr std::size_t FileSizeMax = 64 << 20;

int Complain(const Ending& ending) {
    std::cerr << "tamber-board: " << ending.Text << '\n';
    return ending.Status;
}

// Counts from the start of the program, so that the times of a trace are easy to read.
BoardClock StartedClock() {
    return [start = std::chrono::steady_clock::now()] {
        return std::chrono::duration_cast<std::chrono::microseconds>(
            std::chrono::steady_clock::now() - start);
    };
}

// What `read` makes of the text of a file; the failure names the file.
template <typename Read>
auto ReadFile(const std::string& name, Read read) {
    return ReadTextFile(name, FileSizeMax)
        .map_error([&](const std::string& reason) {
            return Ending{WronglyCalled, "cannot read " + name + ": " + reason};
        })
        .and_then([&](const std::string& text) {
            return read(text).map_error([&](const LineFailure& failure) {
                return Ending{WronglyCalled,
                              name + ':' + std::to_string(failure.Line) + ": " + failure.Cause};
            });
        });
}

tl::expected<void, Ending> Save(const std::string& name, const DeviceMemory& memory) {
    if (name.empty())
        return {};
    return ReplaceTextFile(name, DeviceText(memory)).map_error([&](const std::string& reason) {
        return Ending{Failed, "cannot write " + name + ": " + reason};
    });
}

tl::expected<void, Ending> Run(const BoardOptions& options) {
    const auto clock = StartedClock();
    TraceOutput trace;
    BoardTrace tracer;
    if (options.Trace)
        tracer = [&trace](std::string_view line) { trace.Add(line); };
    BoardEngine engine(clock, options.Device, options.Identity, tracer);
    if (!options.LoadFile.empty()) {
        const auto load = [&](const std::string& text) {
            return LoadDevice(text, engine.Memory());
        };
        if (auto loaded = ReadFile(options.LoadFile, load); !loaded)
            return loaded;
    }

    FaultyBoard faulty(engine, clock, options.Faults, tracer);
    BoardLine* line = &faulty;
    std::optional<ReplayBoard> replay;
    if (!options.ReplayFile.empty()) {
        const auto exchanges = ReadFile(options.ReplayFile, ReadTrace);
        if (!exchanges)
            return tl::unexpected(exchanges.error());
        line = &replay.emplace(clock, *exchanges, tracer);
    }
    std::optional<PacedLine> paced;
    if (options.Pace)
        line = &paced.emplace(*line, clock, *options.Pace);

    CatchSignals();
    const auto failed = [](const std::string& reason) { return Ending{Failed, reason}; };
    const auto terminal = PseudoTerminal::Open().map_error(failed);
    if (!terminal)
        return tl::unexpected(terminal.error());
    const auto link = options.Link.empty() ? "" : std::filesystem::absolute(options.Link).string();
    if (!link.empty())
        if (const auto made = MakeLink(link, terminal->Name()); !made)
            return tl::unexpected(failed(made.error()));
    std::cout << "ready " << terminal->Name() << std::endl;

    const auto save = [&] {
        if (const auto saved = Save(options.SaveFile, engine.Memory()); !saved)
            Complain(saved.error());
    };
    // The trace is written when the reply is out: it must not slow the line.
    Serve(*line, clock, *terminal, save, [&trace] { trace.Write(); });
    RemoveLink(link, terminal->Name());
    return Save(options.SaveFile, engine.Memory());
}

}  // namespace

int main(int count, char** values) {
    const auto options = ParseBoardOptions({values + 1, values + count});
    if (!options && options.error().Status == 0) {
        std::cout << options.error().Text;
        return 0;
    }
    const auto done = options.and_then(Run);
    return done ? 0 : Complain(done.error());
}
