#include "apps/options/faults.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "apps/names/nearest_name.h"

namespace vistrel::app {
namespace {

// Those of the command, its groups and the commands within it that have been given.
void addOptionNames(const CLI::App& app, std::vector<std::string>& names) {
  for (const CLI::Option* option : app.get_options())
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  for (const CLI::App* part : app.get_subcommands([](const CLI::App*) { return true; }))
    if (part->get_name().empty() || part->parsed()) addOptionNames(*part, names);
}

// "; report takes it"
std::string otherCommandText(const CLI::App& program, const std::string& option) {
  for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; })) {
    std::vector<std::string> names;
    addOptionNames(*command, names);
    if (std::ranges::count(names, option)) return fmt::format("; {} takes it", command->get_name());
  }
  return "";
}

std::string unexpectedText(const CLI::App& program, const std::string& argument) {
  if (argument[0] != '-') return fmt::format("{}: the command takes no such argument", argument);
  std::vector<std::string> names;
  addOptionNames(program, names);
  const std::string option = argument.substr(0, argument.find('='));
  const std::string nearest = nearestText(option, names);
  return fmt::format("{}: there is no such option{}; --help lists them", argument,
                     nearest.empty() ? otherCommandText(program, option) : nearest);
}

// "--phase: At Most 1 required but received 2", "--output: 1 required OUT missing",
// "json was given a disallowed flag override"
std::string mismatchText(const std::string& text) {
  constexpr std::string_view kRequired = "required ", kMissing = " missing";
  if (const size_t end = text.find(" was given a disallowed"); end != text.npos)
    return fmt::format("--{}: it takes no value", text.substr(0, end));
  const std::string name = text.substr(0, text.find(':'));
  if (text.find("At Most 1 ") != text.npos)
    return fmt::format("{}: it is given more than once", name);
  const size_t begin = text.find(kRequired), end = text.rfind(kMissing);
  if (begin == text.npos || end == text.npos) return text;
  const size_t value = begin + kRequired.size();
  return fmt::format("{}: {} is missing", name, text.substr(value, end - value));
}

}  // namespace

// An unexpected argument may be the reason why a required one is missing.
std::string faultText(const CLI::App& program, const CLI::ParseError& error) {
  const std::vector<std::string> unexpected = program.remaining(true);
  if (!unexpected.empty()) return unexpectedText(program, unexpected.front());
  if (error.get_name() == "ArgumentMismatch") return mismatchText(error.what());
  return error.what();
}

}  // namespace vistrel::app
