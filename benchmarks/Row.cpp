#include "Row.hpp"

#include <cmath>
#include <cstdio>

namespace Tamber::Bench {
namespace {

std::string Number(double value, const char* unit = "") {
    const double size = std::fabs(value);
    char text[64];
    std::snprintf(text, sizeof text, size >= 100 ? "%.1f%s%s" : "%.2f%s%s", value,
                  *unit != 0 ? " " : "", unit);
    return text;
}

std::string Number(double value, Unit unit) {
    return Number(value / unit.Size, unit.Name);
}

void Print(const std::string& figure, const std::string& measured, const std::string& yardstick,
           const std::string& ratio, const std::string& bound, const std::string& verdict) {
    std::printf("%-46s | %10s | %10s | %6s | %-17s | %s\n", figure.c_str(), measured.c_str(),
                yardstick.c_str(), ratio.c_str(), bound.c_str(), verdict.c_str());
    std::fflush(stdout);
}

const char* Verdict(bool met) {
    return met ? "met" : "NOT MET";
}

}  // namespace

void PrintRatio(const std::string& figure, double program, double yardstick, Unit unit,
                double ratioMax) {
    const double ratio = program / yardstick;
    Print(figure, Number(program, unit), Number(yardstick, unit), Number(ratio),
          "ratio <= " + Number(ratioMax), Verdict(ratio <= ratioMax));
}

void PrintLimit(const std::string& figure, double program, double yardstick, Unit unit,
                double most) {
    Print(figure, Number(program, unit), Number(yardstick, unit), Number(program / yardstick),
          "< " + Number(most, unit), Verdict(program < most));
}

void PrintRange(const std::string& figure, double program, double yardstick, Unit unit,
                double least, double most) {
    Print(figure, Number(program, unit), Number(yardstick, unit), Number(program / yardstick),
          Number(least / unit.Size) + " to " + Number(most / unit.Size),
          Verdict(program >= least && program <= most));
}

void PrintUnbound(const std::string& figure, double program, double yardstick, Unit unit) {
    Print(figure, Number(program, unit), Number(yardstick, unit), Number(program / yardstick), "",
          "");
}

void PrintMissing(const std::string& figure, const std::string& reason) {
    Print(figure, "-", "-", "-", "", "NOT MEASURED: " + reason);
}

}  // namespace Tamber::Bench
