#include "Measure.hpp"

#include <sched.h>
#include <time.h>

#include <algorithm>

namespace Tamber::Bench {
namespace {

double Seconds(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

}  // namespace

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

Moment Moment::Now() {
    return {Seconds(CLOCK_MONOTONIC), Seconds(CLOCK_PROCESS_CPUTIME_ID)};
}

Spent Moment::Since(const Moment& earlier) const {
    return {Wall - earlier.Wall, Processor - earlier.Processor};
}

void Rounds::Add(const Spent& spent) {
    wall_.push_back(spent.Wall);
    processor_.push_back(spent.Processor);
}

double Rounds::Wall() const {
    return Median(wall_);
}

double Rounds::Processor() const {
    return Median(processor_);
}

double Rounds::Shortest() const {
    return *std::min_element(wall_.begin(), wall_.end());
}

double Rounds::Longest() const {
    return *std::max_element(wall_.begin(), wall_.end());
}

Comparison Compare(int rounds, const Work& program, const Work& yardstick) {
    Comparison comparison;
    program();
    yardstick();
    for (int round = 0; round < rounds; ++round) {
        const bool programFirst = round % 2 == 0;
        if (programFirst)
            comparison.Program.Add(program());
        comparison.Yardstick.Add(yardstick());
        if (!programFirst)
            comparison.Program.Add(program());
    }
    return comparison;
}

bool UseCore(int core) {
    static const cpu_set_t allowed = [] {
        cpu_set_t set;
        CPU_ZERO(&set);
        sched_getaffinity(0, sizeof set, &set);
        return set;
    }();
    for (int number = 0; number < CPU_SETSIZE; ++number) {
        if (!CPU_ISSET(number, &allowed) || core-- > 0)
            continue;
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(number, &one);
        return sched_setaffinity(0, sizeof one, &one) == 0;
    }
    return false;
}

}  // namespace Tamber::Bench
