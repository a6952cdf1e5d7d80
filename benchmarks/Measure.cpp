#include "Measure.hpp"

#include <sched.h>
#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string_view>

namespace Tamber::Bench {
namespace {

double Seconds(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

std::string Number(double value, const char* unit = "") {
    char text[64];
    std::snprintf(text, sizeof text, value >= 100 ? "%.1f%s%s" : "%.2f%s%s", value,
                  *unit != 0 ? " " : "", unit);
    return text;
}

std::string Text(const Bound& bound, Unit unit) {
    if (bound.OfRatio)
        return "ratio <= " + Number(bound.Most);
    if (bound.Least == 0)
        return "<= " + Number(bound.Most / unit.Size, unit.Name);
    return Number(bound.Least / unit.Size) + " to " + Number(bound.Most / unit.Size);
}

}  // namespace

void Require(bool good, const std::string& message) {
    if (good)
        return;
    std::cerr << "bench: " << message << std::endl;
    std::exit(EXIT_FAILURE);
}

int RoundsWanted(int count, char** values) {
    return values[count - 1] == std::string_view("--quick") ? 3 : 11;
}

void UseCore(int core) {
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(core, &one);
    (void)sched_setaffinity(0, sizeof one, &one);
}

Time Time::Now() {
    return {Seconds(CLOCK_MONOTONIC), Seconds(CLOCK_PROCESS_CPUTIME_ID)};
}

Time operator-(const Time& later, const Time& earlier) {
    return {later.Wall - earlier.Wall, later.Processor - earlier.Processor};
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

void PrintRow(const std::string& name, Unit unit, const Figure& figure, const Bound& bound) {
    const bool compared = figure.Yardstick != 0;
    const bool bounded = bound.Most != 0;
    const double value = bound.OfRatio ? figure.Ratio : figure.Measured;
    const bool met = value >= bound.Least && value <= bound.Most;
    std::printf("%-46s | %10s | %10s | %6s | %-17s | %s\n", name.c_str(),
                Number(figure.Measured / unit.Size, unit.Name).c_str(),
                compared ? Number(figure.Yardstick / unit.Size, unit.Name).c_str() : "",
                compared ? Number(figure.Ratio).c_str() : "",
                bounded ? Text(bound, unit).c_str() : "",
                !bounded ? ""
                : met    ? "met"
                         : "NOT MET");
    std::fflush(stdout);
}

}  // namespace Tamber::Bench
