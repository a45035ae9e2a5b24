#include "bench/measure.h"

#include <benchmark/benchmark.h>
#include <time.h>

#include <algorithm>
#include <chrono>
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
  explicit Collector(Clock clock) : clock_(clock) {}

  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs)
      if (run.run_type == Run::RT_Iteration)
        times_[run.run_name.function_name].push_back(
            clock_ == Clock::wall ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime());
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
  Clock clock_;
  std::map<std::string, std::vector<double>> times_;
};

double cpuSeconds(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

std::function<void(benchmark::State&)> bodyOf(const Job& job) {
  if (!job.prepare)
    return [run = job.run](benchmark::State& state) {
      for (auto _ : state) {
        run();
        benchmark::ClobberMemory();
      }
    };
  return [job](benchmark::State& state) {
    for (auto _ : state) {
      job.prepare();
      const auto begin = std::chrono::steady_clock::now();
      job.run();
      const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
      state.SetIterationTime(passed.count());
    }
  };
}

}  // namespace

void prepareMeasuring() {
  char program[] = "vistrel-bench", interleave[] = "--benchmark_enable_random_interleaving=true";
  char* arguments[] = {program, interleave, nullptr};
  int count = 2;
  benchmark::Initialize(&count, arguments);
}

std::vector<Timing> measure(const std::vector<Job>& jobs, int rounds, Clock clock) {
  for (const Job& job : jobs) {
    auto* const registered = benchmark::RegisterBenchmark(job.name.c_str(), bodyOf(job));
    registered->Unit(benchmark::kNanosecond)->MinTime(kRepetitionSeconds)->Repetitions(rounds);
    if (job.prepare)
      registered->UseManualTime();
    else if (clock == Clock::wall)
      registered->UseRealTime();
  }
  Collector collector(clock);
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
