// The link as the program uses it, against a loop of the system's own calls.

#include <QApplication>
#include <algorithm>
#include <iostream>
#include <string>

#include "BoardProcess.hpp"
#include "FunctionDriver.hpp"
#include "RawPort.hpp"
#include "core/AutoSequence.hpp"

namespace Tamber::Bench {
namespace {

constexpr int Blocks = MemoryImage::ProgramWordsMax / 8;
constexpr Unit MicrosecondsATrip{"us", 1e-6 * Blocks};

FunctionTimes RunRaw(RawPort& raw, std::int16_t function, double pause) {
    const bool writes = function == FunctionProgram;
    const Time spent = Timed([&] { writes ? raw.WriteBlocks(Blocks) : raw.ReadBlocks(Blocks); });
    return {spent.Wall, spent.Processor, spent.Wall + pause};
}

// The wall and processor time of a round trip, and the time of the whole run, in which the function
// lets `pause` seconds pass after its region.
void MeasureFunction(FunctionDriver& program, RawPort& raw, const std::string& name,
                     std::int16_t function, double pause, int rounds) {
    std::cerr << name << " ..." << std::endl;
    const auto runs = Compare(
        rounds, [&] { return program.Run(function, Blocks); },
        [&] { return RunRaw(raw, function, pause); });
    PrintRow(name + ", one round trip, wall", MicrosecondsATrip, runs.Of(&FunctionTimes::Wall),
             RatioUpTo(1.25));
    PrintRow(name + ", one round trip, processor", MicrosecondsATrip,
             runs.Of(&FunctionTimes::Processor), RatioUpTo(1.5));
    PrintRow(name + ", pause and all", Milliseconds, runs.Of(&FunctionTimes::Whole), NoBound);
}

void MeasureAtOnce(int rounds) {
    const BoardProcess board;
    const BoardProcess rawBoard;
    FunctionDriver program(board.Folder());
    RawPort raw(rawBoard.Port());
    FillProgramMemory(program.Image());
    MeasureFunction(program, raw, "Program 8,192 words", FunctionProgram, 1.0, rounds);
    const MemoryImage written = program.Image();
    program.Image().ClearProgramMemory(10);
    MeasureFunction(program, raw, "Read 8,192 words", FunctionRead, 0.1, 3 * rounds);
    Require(program.Image() == written, "what was read is not what was written");
    MeasureFunction(program, raw, "Verify 8,192 words", FunctionVerify, 0.1, 3 * rounds);
}

void MeasureAtPace(int rounds) {
    std::cerr << "Read at 57600 baud ..." << std::endl;
    const BoardProcess board({"--pace", "57600"});
    const BoardProcess rawBoard({"--pace", "57600"});
    FunctionDriver program(board.Folder());
    RawPort raw(rawBoard.Port());
    const auto reads = Compare(
        rounds, [&] { return program.Run(FunctionRead, Blocks); },
        [&] { return RunRaw(raw, FunctionRead, 0.1); });
    PrintRow("Read 8,192 words at 57600 baud, wall", Milliseconds, reads.Of(&FunctionTimes::Wall),
             RatioUpTo(1.01));
}

void MeasureSilence(int rounds) {
    std::cerr << "Silence ..." << std::endl;
    const BoardProcess board({"--silent-from", "1"});
    const BoardProcess rawBoard({"--silent-from", "1"});
    RawPort raw(rawBoard.Port());
    const auto waits = Compare(
        rounds, [&] { return TimeOut(board.Port()); },
        [&] { return Timed([&] { raw.WaitInVain(); }); });
    const auto [earliest, latest] = std::ranges::minmax(waits.Program, {}, &Time::Wall);
    PrintRow("Time-out of a reply", Milliseconds, waits.Of(&Time::Wall), From(1.000, 1.010));
    PrintRow("Time-out of a reply, the earliest", Milliseconds, {earliest.Wall},
             From(1.000, 1.010));
    PrintRow("Time-out of a reply, the latest", Milliseconds, {latest.Wall}, NoBound);
    PrintRow("A second of silence, processor", Microseconds, waits.Of(&Time::Processor),
             UpTo(0.001));
}

}  // namespace
}  // namespace Tamber::Bench

int main(int count, char** values) {
    using namespace Tamber::Bench;
    const std::string part = count > 1 ? values[1] : "";
    const int rounds = RoundsWanted(count, values);
    UseCore(0);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, values);
    if (part == "at-once")
        MeasureAtOnce(rounds);
    else if (part == "at-pace")
        MeasureAtPace(rounds);
    else if (part == "silence")
        MeasureSilence(rounds);
    else
        Require(false, "usage: bench-link at-once|at-pace|silence [--quick]");
}
