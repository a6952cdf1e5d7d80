#pragma once

#include <string>
#include <type_traits>
#include <vector>

namespace Tamber::Bench {

/// Ends the program with a message when `good` is false.
void Require(bool good, const std::string& message);

/// How many rounds a measurement has; few when the last argument is --quick.
int RoundsWanted(int count, char** values);

/// Binds this process, and what it starts from then on, to the processor core `core`, if it exists.
void UseCore(int core);

/// A moment, or the time between two, in seconds.
struct Time {
    double Wall = 0;
    double Processor = 0;  ///< of all threads of this process, in the system and outside it

    static Time Now();
};

Time operator-(const Time& later, const Time& earlier);

template <typename Work>
Time Timed(Work work) {
    const Time begin = Time::Now();
    work();
    return Time::Now() - begin;
}

double Median(std::vector<double> values);

/// A figure and its yardstick; without one, that is 0 and so is the ratio.
struct Figure {
    double Measured = 0;
    double Yardstick = 0;
    double Ratio = 0;
};

/// The same work done in two ways by turns; a sample holds what one round took.
template <typename Sample>
struct Comparison {
    std::vector<Sample> Program;
    std::vector<Sample> Yardstick;

    /// Medians over all rounds. The ratio is the median of each round's own: whatever else the
    /// machine does in a round slows both.
    Figure Of(double Sample::*part) const {
        std::vector<double> program, yardstick, ratios;
        for (std::size_t round = 0; round < Program.size(); ++round) {
            program.push_back(Program[round].*part);
            yardstick.push_back(Yardstick[round].*part);
            ratios.push_back(program.back() / yardstick.back());
        }
        return {Median(program), Median(yardstick), Median(ratios)};
    }
};

/// Does both `rounds` times, after one round that does not count. The order changes from round to
/// round.
template <typename Program, typename Yardstick, typename Sample = std::invoke_result_t<Program>>
Comparison<Sample> Compare(int rounds, Program program, Yardstick yardstick) {
    Comparison<Sample> comparison;
    program();
    yardstick();
    for (int round = 0; round < rounds; ++round) {
        const bool programFirst = round % 2 == 0;
        if (programFirst)
            comparison.Program.push_back(program());
        comparison.Yardstick.push_back(yardstick());
        if (!programFirst)
            comparison.Program.push_back(program());
    }
    return comparison;
}

/// A unit to print a figure in.
struct Unit {
    const char* Name = "";
    double Size = 1;  ///< in the unit of the figure: 1e-6 prints seconds as microseconds
};

constexpr Unit Microseconds{"us", 1e-6};
constexpr Unit Milliseconds{"ms", 1e-3};
constexpr Unit Mebibytes{"MiB", 1 << 20};

/// What a figure, or its ratio to the yardstick, is to keep to.
struct Bound {
    double Least = 0;
    double Most = 0;  ///< 0: there is no bound
    bool OfRatio = false;
};

/// Prints a row of the table.
void PrintRow(const std::string& name, Unit unit, const Figure& figure, const Bound& bound);

}  // namespace Tamber::Bench
