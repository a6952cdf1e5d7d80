#pragma once

#include <string>

namespace Tamber::Bench {

/// A unit to print a figure in.
struct Unit {
    const char* Name = "";
    double Size = 1;  ///< in the unit of the figure: 1e-6 prints seconds as microseconds
};

constexpr Unit Microseconds{"us", 1e-6};
constexpr Unit Milliseconds{"ms", 1e-3};
constexpr Unit Mebibytes{"MiB", 1 << 20};
constexpr Unit Plain{"", 1};

/// Prints a row of the table: a figure that may be at most `ratioMax` times its yardstick.
void PrintRatio(const std::string& figure, double program, double yardstick, Unit unit,
                double ratioMax);

/// Prints a row whose figure may be at most `most`; the yardstick's stands beside it.
void PrintLimit(const std::string& figure, double program, double yardstick, Unit unit,
                double most);

/// Prints a row whose figure may be from `least` to `most`.
void PrintRange(const std::string& figure, double program, double yardstick, Unit unit,
                double least, double most);

/// Prints a row that no bound goes with.
void PrintUnbound(const std::string& figure, double program, double yardstick, Unit unit);

/// Prints a row that says why there is no figure.
void PrintMissing(const std::string& figure, const std::string& reason);

}  // namespace Tamber::Bench
