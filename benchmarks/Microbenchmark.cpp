#include "Microbenchmark.hpp"

#include <benchmark/benchmark.h>

#include <array>
#include <map>
#include <mutex>
#include <string>

#include "BoardProcess.hpp"

namespace Tamber::Bench {
namespace {

constexpr double SecondsAtLeast = 0.02;  // of one repetition

// Keeps the medians, and prints nothing: the table has its own form.
class MedianReporter final : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            Require(!run.error_occurred, run.error_message);
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
                medians[run.run_name.function_name] = run.GetAdjustedRealTime();
        }
    }

    std::map<std::string, double> medians;
};

void Initialize() {
    static std::once_flag once;
    std::call_once(once, [] {
        std::array<std::string, 2> words{"bench", "--benchmark_enable_random_interleaving=true"};
        std::array<char*, 3> values{words[0].data(), words[1].data(), nullptr};
        int count = 2;
        benchmark::Initialize(&count, values.data());
    });
}

void Register(const char* name, int repetitions, const std::function<void()>& work) {
    benchmark::RegisterBenchmark(name,
                                 [&work](benchmark::State& state) {
                                     for ([[maybe_unused]] auto go : state)
                                         work();
                                 })
        ->Unit(benchmark::kSecond)
        ->UseRealTime()
        ->MinTime(SecondsAtLeast)
        ->Repetitions(repetitions);
}

}  // namespace

Medians CompareShort(int repetitions, const std::function<void()>& program,
                     const std::function<void()>& yardstick) {
    Initialize();
    Register("program", repetitions, program);
    Register("yardstick", repetitions, yardstick);
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::ClearRegisteredBenchmarks();
    return {reporter.medians.at("program"), reporter.medians.at("yardstick")};
}

}  // namespace Tamber::Bench
