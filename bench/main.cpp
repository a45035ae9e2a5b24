// Times whole public calls of the library against peers in the same process and run.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <regex>
#include <stdexcept>

#include "bench/compare.h"
#include "bench/floor.h"
#include "bench/levels.h"
#include "bench/report.h"
#include "bench/samples.h"
#include "vistrel/vistrel.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::core::bench {

namespace {

struct Options {
  std::string filter, json;
  std::vector<std::string> levels;
  int rounds = 50;
  bool list = false;
};

// Reports a row that can't be compared; the other rows still run.
bool addRow(Report& report, const Row& row, const FrameSize& size, Level level, int rounds) {
  try {
    report.add(compare(row, size, level, rounds));
    return true;
  } catch (const std::runtime_error& error) {
    fmt::print(stderr, "{}\n", error.what());
    return false;
  }
}

void runLoops(Report& report, const std::string& section, std::vector<Job> (*jobsOf)(const Frame&),
              int rounds) {
  report.beginLoops(section);
  for (const FrameSize& size : kFrameSizes) {
    const auto jobs = jobsOf(makeFrame(size, 1, 12));
    const auto times = measure(jobs, rounds);
    for (size_t i = 0; i < jobs.size(); ++i)
      report.add(jobs[i].name, size, perPixel(times[i], size));
  }
}

std::string regularExpression(const std::string& text) {
  try {
    std::regex parsed(text);
    return {};
  } catch (const std::regex_error&) {
    return "'" + text + "' is not a regular expression";
  }
}

std::vector<Level> chosenLevels(const std::vector<std::string>& names) {
  if (names.empty()) return usualLevels();
  std::vector<Level> levels;
  for (const std::string& name : names) {
    const auto level = levelNamed(name);
    if (!level || *level > widestLevel())
      throw std::invalid_argument(
          fmt::format("--level: {} is not a level of this processor; the widest of {} is {}", name,
                      fmt::join(kLevelNames, ", "), nameOf(widestLevel())));
    levels.push_back(*level);
  }
  return levels;
}

// A row and a frame that match the filter.
struct Choice {
  const Row& row;
  const FrameSize& size;
};

std::vector<Choice> chosenRows(const std::regex& filter) {
  std::vector<Choice> choices;
  for (const Row& row : rows())
    for (const FrameSize& size : kFrameSizes)
      if (std::regex_search(rowName(row, size), filter)) choices.push_back({row, size});
  return choices;
}

// Returns true if every row could be compared.
bool run(const Options& options) {
  const std::regex filter(options.filter, std::regex::icase);
  const auto choices = chosenRows(filter);
  if (options.list) {
    for (const auto& [row, size] : choices) fmt::print("{}\n", rowName(row, size));
    return true;
  }
  const bool floor = std::regex_search("floor", filter);
  const bool samples = std::regex_search("samples", filter);
  if (choices.empty() && !floor && !samples)
    throw std::invalid_argument(
        fmt::format("filter: no row is named like '{}'; --list prints the names", options.filter));
  const auto levels = chosenLevels(options.levels);
  ImgLoadDriver();
  Report report(options.filter, options.rounds);
  if (floor) runLoops(report, "floor", floorJobs, options.rounds);
  bool allCompared = true;
  for (const Level level : levels) {
    setLevel(level);  // of the filters; the host layer has an engine of its own
    if (vistrel_set_level(static_cast<size_t>(level), nullptr) != VISTREL_OK)
      throw std::logic_error("the host layer lacks this level");
    if (samples)
      runLoops(report, fmt::format("samples, {}", nameOf(level)), sampleJobs, options.rounds);
    if (choices.empty()) continue;
    report.beginLevel(level);
    for (const auto& [row, size] : choices)
      allCompared &= addRow(report, row, size, level, options.rounds);
  }
  report.end();
  if (!options.json.empty()) report.write(options.json);
  ImgUnloadDriver();
  return allCompared;
}

}  // namespace

}  // namespace vistrel::core::bench

int main(int argc, char** argv) {
  using namespace vistrel::core::bench;
  CLI::App app("Times the library's conversions against peers, on one thread", "vistrel-bench");
  Options options;
  app.add_option("filter", options.filter,
                 "Only rows whose name (see --list) matches this regular expression; 'floor' for "
                 "the loops that only move bytes, 'samples' for unpacking and preparation")
      ->check(regularExpression, "");
  app.add_option("--json", options.json, "Also write the results to this file");
  app.add_option("--level", options.levels,
                 fmt::format("Processor levels of the library: {}; by default the widest, and "
                             "avx2 beside avx512",
                             fmt::join(vistrel::core::kLevelNames, ", ")))
      ->delimiter(',')
      ->allow_extra_args(false);
  app.add_option("--rounds", options.rounds, "Repetitions of each side")
      ->check(CLI::Range(2, 10000))
      ->capture_default_str();
  app.add_flag("--list", options.list, "Print the names of the rows and stop");
  CLI11_PARSE(app, argc, argv);
  try {
    prepareMeasuring();
    return run(options) ? 0 : 1;
  } catch (const std::exception& error) {
    fmt::print(stderr, "vistrel-bench: {}\n", error.what());
    return 1;
  }
}
