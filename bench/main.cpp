// Times whole public calls of the library against peers in the same process and run.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <regex>
#include <stdexcept>

#include "bench/compare.h"
#include "bench/levels.h"
#include "bench/report.h"
#include "bench/sections.h"
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

const Section* const kSections[] = {&kFloor, &kSamples, &kOptions, &kSizes, &kThreads, &kDelay};

std::vector<const Section*> chosenSections(const std::regex& filter) {
  std::vector<const Section*> sections;
  for (const Section* section : kSections)
    if (std::regex_search(section->name, filter)) sections.push_back(section);
  return sections;
}

std::string describedSections() {
  std::string text;
  for (const Section* section : kSections)
    text += fmt::format("; '{}' for {}", section->name, section->about);
  return text;
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

// Those of a level, or if it is empty those that have none.
void runSections(Report& report, const std::vector<const Section*>& sections,
                 std::string_view level, int rounds) {
  for (const Section* section : sections) {
    if (section->hasLevels == level.empty()) continue;
    report.beginSection(level.empty() ? section->name : fmt::format("{}, {}", section->name, level),
                        section->unit);
    section->run(report, rounds);
  }
}

// Returns true if every row could be compared.
bool run(const Options& options) {
  const std::regex filter(options.filter, std::regex::icase);
  const auto choices = chosenRows(filter);
  const auto sections = chosenSections(filter);
  if (options.list) {
    for (const auto& [row, size] : choices) fmt::print("{}\n", rowName(row, size));
    for (const Section* section : sections) fmt::print("{}\n", section->name);
    return true;
  }
  if (choices.empty() && sections.empty())
    throw std::invalid_argument(
        fmt::format("filter: no row is named like '{}'; --list prints the names", options.filter));
  const auto levels = chosenLevels(options.levels);
  ImgLoadDriver();
  Report report(options.filter, options.rounds);
  runSections(report, sections, {}, options.rounds);
  bool allCompared = true;
  for (const Level level : levels) {
    setLevel(level);  // of the filters; the host layer has an engine of its own
    if (vistrel_set_level(static_cast<size_t>(level), nullptr) != VISTREL_OK)
      throw std::logic_error("the host layer lacks this level");
    runSections(report, sections, nameOf(level), options.rounds);
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
  app.add_option(
         "filter", options.filter,
         "Only rows whose name (see --list) matches this regular expression" + describedSections())
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
  app.add_flag("--list", options.list, "Print the names of the rows and sections and stop");
  CLI11_PARSE(app, argc, argv);
  try {
    prepareMeasuring();
    return run(options) ? 0 : 1;
  } catch (const std::exception& error) {
    fmt::print(stderr, "vistrel-bench: {}\n", error.what());
    return 1;
  }
}
