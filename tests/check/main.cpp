// vistrel-check: the library against the reference, function by function.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <array>
#include <chrono>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/check/checker.h"
#include "tests/check/checksum.h"
#include "tests/check/measure.h"
#include "tests/check/self_test.h"
#include "tests/supported_levels.h"

namespace vistrel::core::check {
namespace {

constexpr int kPassed = 0, kFailed = 1, kUsage = 2, kNoSuchLevel = 77;
constexpr int kFailuresShown = 3;
constexpr uint32_t kBenchCases = 4;

struct Options {
  bool list = false, selfTest = false, bench = false, checksum = false;
  std::string filter, group, level, repeat, golden;
  uint32_t cases = 0;  // 0: as many as the mode has by default
  uint64_t seed = 1;
};

bool chosen(const Experiment& experiment, const Options& options) {
  return experiment.name.find(options.filter) != std::string::npos &&
         (options.group.empty() || experiment.group == options.group);
}

// Prints what went wrong and the line that repeats it.
bool passes(Checker& checker, const Case& calls, Level level) {
  const std::string repeat =
      fmt::format("vistrel-check --level {} --repeat \"{}\"", nameOf(level), text(calls));
  setTerminationMessage("FAIL " + repeat + "\n");
  const auto failure = checker.check(calls, level);
  if (!failure) return true;
  fmt::print("FAIL {} at {}: {}\n  {}\n", calls.front().subject, nameOf(level), failure->text,
             repeat);
  return false;
}

using Failures = std::array<int, kLevels>;

// Runs each case at every level. Leaves a level after kFailuresShown failures.
Failures countFailures(Checker& checker, const Experiment& experiment,
                       const std::vector<Level>& levels, const Options& options) {
  const uint32_t cases = options.cases ? options.cases : experiment.cases;
  Failures failures = {};
  for (uint32_t n = 0; n < cases; ++n) {
    Draw draw(options.seed, n);
    const Case calls = experiment.draw(draw);
    for (const Level level : levels) {
      int& count = failures[static_cast<size_t>(level)];
      if (count < kFailuresShown && !passes(checker, calls, level)) ++count;
    }
  }
  return failures;
}

bool checkExperiment(Checker& checker, const Experiment& experiment, std::vector<Level> levels,
                     const Options& options) {
  const auto start = std::chrono::steady_clock::now();
  if (!experiment.levels) levels.resize(1);
  const Failures failures = countFailures(checker, experiment, levels, options);
  std::string failed, passed;
  for (const Level level : levels)
    (failures[static_cast<size_t>(level)] ? failed : passed) +=
        fmt::format(" {}", experiment.levels ? nameOf(level) : "any level");
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  if (!failed.empty()) fmt::print("FAILED {} at{}\n", experiment.name, failed);
  if (!passed.empty()) fmt::print("ok {} at{} ({:.1f} s)\n", experiment.name, passed, time.count());
  return failed.empty();
}

int check(const Catalogue& all, const std::vector<Level>& levels, const Options& options) {
  Checker checker(all);
  int experiments = 0, failed = 0;
  for (const Experiment& experiment : all.experiments) {
    if (!chosen(experiment, options)) continue;
    ++experiments;
    if (!checkExperiment(checker, experiment, levels, options)) ++failed;
  }
  if (experiments == 0)
    throw std::invalid_argument(fmt::format(
        "--filter '{}' --group '{}': no such function; see --list", options.filter, options.group));
  fmt::print("{} calls between guard pages are equal\n", checker.equalCalls());
  if (failed) fmt::print("{} of {} functions failed\n", failed, experiments);
  return failed ? kFailed : kPassed;
}

int repeat(const Catalogue& all, const std::vector<Level>& levels, const Options& options) {
  const Case calls = readCase(options.repeat);
  if (options.bench) {
    measure(all, calls, levels);
    return kPassed;
  }
  Checker checker(all);
  int failed = 0;
  for (const Level level : levels) {
    if (passes(checker, calls, level))
      fmt::print("ok at {}\n", nameOf(level));
    else
      ++failed;
  }
  return failed ? kFailed : kPassed;
}

int bench(const Catalogue& all, const std::vector<Level>& levels, const Options& options) {
  fmt::print("nanoseconds per source pixel: minimum, median\n");
  for (const Experiment& experiment : all.experiments) {
    if (!chosen(experiment, options) || !experiment.levels) continue;
    for (uint32_t n = 0; n < (options.cases ? options.cases : kBenchCases); ++n) {
      Draw draw = Draw::forBench(options.seed, n);
      const Case calls = experiment.draw(draw);
      if (calls.size() == 1) measure(all, calls, levels);
    }
  }
  return kPassed;
}

int list(const Catalogue& all, const Options& options) {
  for (const Experiment& experiment : all.experiments)
    if (chosen(experiment, options)) fmt::print("{:<10} {}\n", experiment.group, experiment.name);
  return kPassed;
}

int compareGolden(const Catalogue& all, const std::vector<Level>& levels, const Options& options) {
  bool same = compareChecksums(all, kReference, options.golden);
  fmt::print("{} the reference\n", same ? "ok" : "FAILED");
  for (const Level level : levels) {
    setLevel(level);
    const bool sameHere = compareChecksums(all, kProduct, options.golden);
    fmt::print("{} the product at {}\n", sameHere ? "ok" : "FAILED", nameOf(level));
    same = same && sameHere;
  }
  return same ? kPassed : kFailed;
}

int run(const Options& options) {
  std::vector<Level> levels = test::supportedLevels();
  if (!options.level.empty()) {
    const auto level = levelNamed(options.level);
    if (!level)
      throw std::invalid_argument(fmt::format("--level '{}': no such level", options.level));
    if (*level > levels.back()) {
      fmt::print("this processor has no {}\n", options.level);
      return kNoSuchLevel;
    }
    levels = {*level};
  }
  const Catalogue all = catalogue();
  if (options.list) return list(all, options);
  if (options.selfTest) return selfTest(all, options.seed) ? kPassed : kFailed;
  if (!options.golden.empty()) return compareGolden(all, levels, options);
  if (options.checksum) return printChecksums(all), kPassed;
  if (!options.repeat.empty()) return repeat(all, levels, options);
  return options.bench ? bench(all, levels, options) : check(all, levels, options);
}

int parseAndRun(int argc, char** argv) {
  Options options;
  CLI::App app("Compares every function of the library with the reference, byte by byte.");
  app.add_flag("--list", options.list, "list the functions");
  app.add_option("--filter", options.filter, "only functions with TEXT in their name");
  app.add_option("--group", options.group, "only the functions of a group");
  app.add_option("--cases", options.cases,
                 "cases per function; by default every small size, 600 of the engine")
      ->envname("VISTREL_CHECK_CASES");
  app.add_option("--seed", options.seed, "draw other cases");
  app.add_option("--level", options.level,
                 fmt::format("{}; by default all", fmt::join(kLevelNames, ", ")));
  app.add_option("--repeat", options.repeat, "one case, as a failure prints it");
  app.add_flag("--self-test", options.selfTest, "prove that broken functions are caught");
  app.add_flag("--bench", options.bench, "measure instead of comparing");
  app.add_flag("--checksum", options.checksum, "print the reference's golden numbers");
  app.add_option("--golden", options.golden, "compare both sides with a file of golden numbers");
  CLI11_PARSE(app, argc, argv);
  return run(options);
}

}  // namespace
}  // namespace vistrel::core::check

int main(int argc, char** argv) {
  try {
    return vistrel::core::check::parseAndRun(argc, argv);
  } catch (const std::exception& error) {
    fmt::print(stderr, "vistrel-check: {}\n", error.what());
    return vistrel::core::check::kUsage;
  }
}
