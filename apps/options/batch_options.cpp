#include "apps/options/batch_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "apps/options/options.h"

namespace vistrel::app {
namespace {

bool contains(const std::vector<std::string>& words, const std::string& word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

ProgressMode parseProgressMode(const std::string& word) {
  if (word == "always") return ProgressMode::kAlways;
  if (word == "never") return ProgressMode::kNever;
  return word == "json" ? ProgressMode::kJson : ProgressMode::kAuto;
}

}  // namespace

void addBatchOptions(CLI::App& command, BatchOptions& o) {
  between(command.add_option("-j,--jobs", o.workers, "Worker threads (1); 0: one per CPU"), 0,
          kMaxWorkers);
  command.add_flag("--keep-going", o.keepGoing, "Continue after an input fails");
  command.add_flag("--overwrite", o.overwrite, "Remake pictures that are up to date");
  command.add_flag("--dry-run", o.dryRun, "Check all inputs, show what would be done");
  command.add_option("--manifest", o.manifest, "Record pictures; remake those that differ from it")
      ->type_name("FILE");
  command
      .add_option_function<std::string>(
          "--progress", [&o](const std::string& s) { o.progress = parseProgressMode(s); },
          "auto (on a terminal), always, never or json")
      ->check(CLI::IsMember({"auto", "always", "never", "json"}).description(""))
      ->type_name("WHEN");
  command.add_flag("--json", o.json, "Report on standard output as JSON");
}

std::string givenOptions(const CLI::App& command, const std::vector<std::string>& groups,
                         const std::vector<std::string>& leftOut) {
  const bool all = command.get_name().empty() && contains(groups, command.get_group());
  std::string text;
  for (const CLI::Option* option : command.get_options({})) {
    if (option->count() == 0 || contains(leftOut, option->get_name()) ||
        !(all || contains(groups, option->get_group())))
      continue;
    text += (text.empty() ? "" : " ") + option->get_name();
    for (const std::string& value : option->results())
      if (option->get_expected_max() > 0) text += " " + quoted(value);
  }
  for (const CLI::App* part : command.get_subcommands({})) {
    const std::string more = givenOptions(*part, groups, leftOut);
    text += (text.empty() || more.empty() ? "" : " ") + more;
  }
  return text;
}

}  // namespace vistrel::app
