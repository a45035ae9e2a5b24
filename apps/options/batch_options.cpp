#include "apps/options/batch_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>

#include "apps/error.h"
#include "apps/options/options.h"

namespace vistrel::app {
namespace {

bool contains(const std::vector<std::string>& words, const std::string& word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

Shard parseShard(const std::string& text) {
  Shard shard;
  const auto number = [&text](size_t from, size_t to, uint32_t& n) {
    const auto [rest, error] = std::from_chars(&text[from], &text[to], n);
    return error == std::errc{} && rest == &text[to];
  };
  const size_t slash = text.find('/');
  if (slash == text.npos || !number(0, slash, shard.index) ||
      !number(slash + 1, text.size(), shard.count) || shard.index < 1 || shard.index > shard.count)
    throwError(kUsage, "--shard {}: I/N is expected, with I from 1 to N", text);
  return shard;
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
  command.add_flag("-r,--recursive", o.recursive, "Folders with their sub-folders");
  command
      .add_option_function<std::string>(
          "--shard", [&o](const std::string& s) { o.shard = parseShard(s); },
          "Only part I of N of the pictures, for array jobs")
      ->type_name("I/N");
  command.add_flag("--keep-going", o.keepGoing, "Continue after an input fails");
  command.add_flag("--overwrite", o.overwrite, "Remake pictures that are up to date");
  command.add_flag("--dry-run", o.dryRun, "Check all inputs, show what would be done");
  aFile(command.add_option("--manifest", o.manifest,
                           "Record pictures; remake those that differ from it"))
      ->type_name("FILE");
  auto* quiet = command.add_flag("-q,--quiet", o.quiet, "Say nothing but what failed");
  command
      .add_option_function<std::string>(
          "--progress", [&o](const std::string& s) { o.progress = parseProgressMode(s); },
          "auto (on a terminal), always, never or json")
      ->check(CLI::IsMember({"auto", "always", "never", "json"}).description(""))
      ->type_name("WHEN")
      ->excludes(quiet);
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
