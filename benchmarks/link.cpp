// The link as the program uses it, against a loop of the system's own calls.

#include <QApplication>
#include <cstring>
#include <iostream>
#include <string>

#include "BoardProcess.hpp"
#include "FunctionDriver.hpp"
#include "Memories.hpp"
#include "RawPort.hpp"
#include "Row.hpp"
#include "core/AutoSequence.hpp"

namespace Tamber::Bench {
namespace {

constexpr int Blocks = MemoryImage::ProgramWordsMax / 8;
constexpr double WallRatioMax = 1.25;
constexpr double ProcessorRatioMax = 1.5;
constexpr double PacedRatioMax = 1.01;

struct Figure {
    const char* name;
    std::int16_t function;
    int pause;  // milliseconds that the function lets pass behind its region
    int rounds;
    Spent (RawPort::*yardstick)(int blocks);
};

// The wall and processor time of a round trip, and of the whole run.
void MeasureFunction(FunctionDriver& program, RawPort& raw, const Figure& figure) {
    std::cerr << figure.name << " ..." << std::endl;
    Comparison whole;
    const Comparison trips = Compare(
        figure.rounds,
        [&] {
            const FunctionTimes times = program.Run(figure.function, Blocks);
            whole.Program.Add(times.Whole);
            return times.Exchange;
        },
        [&] {
            const Moment begin = Moment::Now();
            const Spent spent = (raw.*figure.yardstick)(Blocks);
            raw.EndAndPause(figure.pause);
            whole.Yardstick.Add(Moment::Now().Since(begin));
            return spent;
        });
    const std::string name = figure.name;
    PrintRatio(name + ", one round trip, wall", trips.Program.Wall() / Blocks,
               trips.Yardstick.Wall() / Blocks, Microseconds, WallRatioMax);
    PrintRatio(name + ", one round trip, processor", trips.Program.Processor() / Blocks,
               trips.Yardstick.Processor() / Blocks, Microseconds, ProcessorRatioMax);
    PrintUnbound(name + ", " + std::to_string(figure.pause) + " ms pause and all",
                 whole.Program.Wall(), whole.Yardstick.Wall(), Milliseconds);
}

void MeasureAnsweringAtOnce(int rounds) {
    const BoardProcess board;
    const BoardProcess rawBoard;
    FunctionDriver program(board.Folder());
    RawPort raw(rawBoard.Port());
    FillProgramMemory(program.Image());
    MeasureFunction(program, raw,
                    {"Program 8,192 words", FunctionProgram, 1000, rounds, &RawPort::WriteBlocks});
    const MemoryImage written = program.Image();
    program.Image().ClearProgramMemory(10);
    MeasureFunction(program, raw,
                    {"Read 8,192 words", FunctionRead, 100, 3 * rounds, &RawPort::ReadBlocks});
    Require(program.Image() == written, "what was read is not what was written");
    MeasureFunction(program, raw,
                    {"Verify 8,192 words", FunctionVerify, 100, 3 * rounds, &RawPort::ReadBlocks});
}

void MeasureAtPace(int rounds) {
    std::cerr << "Read at 57600 baud ..." << std::endl;
    const BoardProcess board({"--pace", "57600"});
    const BoardProcess rawBoard({"--pace", "57600"});
    FunctionDriver program(board.Folder());
    RawPort raw(rawBoard.Port());
    const Comparison reads = Compare(
        rounds, [&] { return program.Run(FunctionRead, Blocks).Exchange; },
        [&] { return raw.ReadBlocks(Blocks); });
    PrintRatio("Read 8,192 words at 57600 baud, wall", reads.Program.Wall(), reads.Yardstick.Wall(),
               Milliseconds, PacedRatioMax);
}

void MeasureSilence(int rounds) {
    std::cerr << "Silence ..." << std::endl;
    const BoardProcess board;
    const BoardProcess silentBoard({"--silent-from", "1"});
    const BoardProcess rawBoard({"--silent-from", "1"});
    FunctionDriver program(board.Folder());
    RawPort raw(rawBoard.Port());
    const Comparison waits = Compare(
        rounds, [&] { return program.TimeOut(silentBoard.Folder()); },
        [&] { return raw.WaitInVain(); });
    PrintRange("Time-out of a reply", waits.Program.Wall(), waits.Yardstick.Wall(), Milliseconds,
               1.000, 1.010);
    PrintRange("Time-out of a reply, the earliest", waits.Program.Shortest(),
               waits.Yardstick.Shortest(), Milliseconds, 1.000, 1.010);
    PrintUnbound("Time-out of a reply, the latest", waits.Program.Longest(),
                 waits.Yardstick.Longest(), Milliseconds);
    PrintLimit("A second of silence, processor", waits.Program.Processor(),
               waits.Yardstick.Processor(), Microseconds, 0.001);
}

}  // namespace
}  // namespace Tamber::Bench

int main(int count, char** values) {
    using namespace Tamber::Bench;
    const bool quick = count > 2 && std::strcmp(values[2], "--quick") == 0;
    const std::string part = count > 1 ? values[1] : "";
    UseCore(0);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, values);
    if (part == "at-once")
        MeasureAnsweringAtOnce(quick ? 3 : 11);
    else if (part == "at-pace")
        MeasureAtPace(quick ? 3 : 11);
    else if (part == "silence")
        MeasureSilence(quick ? 3 : 11);
    else
        Require(false, "usage: bench-link at-once|at-pace|silence [--quick]");
}
