#include "bench/measure.h"

#include <benchmark/benchmark.h>
#include <time.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <stdexcept>

namespace vistrel::core::bench {

namespace {

constexpr double kRepetitionSeconds = 0.008;

// Collects the times of the repetitions without printing.
class Collector : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs)
      if (run.run_type == Run::RT_Iteration)
        times_[run.run_name.function_name].push_back(run.GetAdjustedCPUTime());
  }

  Timing timing(const std::string& name) {
    auto& times = times_[name];
    if (times.empty()) throw std::runtime_error("not measured: " + name);
    std::sort(times.begin(), times.end());
    const size_t middle = times.size() / 2;
    return {times.front(),
            times.size() % 2 ? times[middle] : (times[middle - 1] + times[middle]) / 2};
  }

 private:
  std::map<std::string, std::vector<double>> times_;
};

double cpuSeconds(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

}  // namespace

void prepareMeasuring() {
  char program[] = "vistrel-bench", interleave[] = "--benchmark_enable_random_interleaving=true";
  char* arguments[] = {program, interleave, nullptr};
  int count = 2;
  benchmark::Initialize(&count, arguments);
}

std::vector<Timing> measure(const std::vector<Job>& jobs, int rounds) {
  for (const Job& job : jobs) {
    const auto body = [run = job.run](benchmark::State& state) {
      for (auto _ : state) {
        run();
        benchmark::ClobberMemory();
      }
    };
    benchmark::RegisterBenchmark(job.name.c_str(), body)
        ->Unit(benchmark::kNanosecond)
        ->MinTime(kRepetitionSeconds)
        ->Repetitions(rounds);
  }
  Collector collector;
  benchmark::RunSpecifiedBenchmarks(&collector, "all");
  benchmark::ClearRegisteredBenchmarks();
  std::vector<Timing> timings;
  for (const Job& job : jobs) timings.push_back(collector.timing(job.name));
  return timings;
}

bool staysOnThisThread(const std::function<void()>& run) {
  const double process = cpuSeconds(CLOCK_PROCESS_CPUTIME_ID);
  const double thread = cpuSeconds(CLOCK_THREAD_CPUTIME_ID);
  run();
  const double threadSpent = cpuSeconds(CLOCK_THREAD_CPUTIME_ID) - thread;
  const double processSpent = cpuSeconds(CLOCK_PROCESS_CPUTIME_ID) - process;
  const std::filesystem::directory_iterator threads("/proc/self/task"), none;
  return std::distance(threads, none) == 1 && processSpent < 1.1 * threadSpent + 1e-4;
}

}  // namespace vistrel::core::bench
