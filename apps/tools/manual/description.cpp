#include "apps/tools/manual/description.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <regex>
#include <set>

#include "apps/names/output_type.h"
#include "apps/names/pixel_format.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr int kMostNumbers = 64;  // that a list may offer

// The words in placeholders such as "a|b|c", "1..4" and "2..6|FILE".
std::vector<std::string> wordsOf(const std::string& value) {
  std::vector<std::string> words;
  static const std::regex range("([0-9]+)\\.\\.([0-9]+)"), word("[a-z0-9+-]+");
  for (const std::string& part : split(value, "|")) {
    std::smatch ends;
    if (std::regex_match(part, ends, range)) {
      const int first = std::stoi(ends[1]), last = std::stoi(ends[2]);
      for (int i = first; i <= last && last - first < kMostNumbers; ++i)
        words.push_back(std::to_string(i));
    } else if (std::regex_match(part, word)) {
      words.push_back(part);
    }
  }
  return words;
}

std::vector<std::string> phaseWords() {
  std::vector<std::string> words;
  for (uint32_t phase = 0; const char* name = vistrel_phase_name(phase); ++phase)
    words.emplace_back(name);
  return words;
}

std::vector<std::string> algorithmWords() {
  std::vector<std::string> words;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    words.emplace_back(a->name);
  return words;
}

// PFNC values would hide the names.
std::vector<std::string> pixelFormatWords() {
  std::set<std::string> words;
  for (const PixelFormat& format : pixelFormats())
    for (const std::string& name : namesOf(format))
      if (name != format.pfncValue) words.insert(name);
  return {words.begin(), words.end()};
}

// The values that the library and the program know, or else those of the placeholder.
std::vector<std::string> knownWords(const OptionText& option) {
  const std::string name = option.names.empty() ? option.value : option.names.back();
  if (option.value.starts_with("PHASE")) return phaseWords();
  if (name == "--algorithm") return algorithmWords();
  if (name == "--pixfmt" || name == "NAME") return pixelFormatWords();
  if (name == "--type") return folderTypes();
  return wordsOf(option.value);
}

Value kindOf(const OptionText& option) {
  if (option.value.empty()) return Value::kNone;
  static const std::regex file("(^|.*\\|)(FILE|IN|OUT|IMAGE|[A-Z]+\\.[a-z]+)(\\|.*|$)");
  if (std::regex_match(option.value, file)) return Value::kFile;
  if (option.value == "DIR") return Value::kFolder;
  return option.words.empty() ? Value::kOther : Value::kWords;
}

// "Needs --size. Excludes --curve.", sorted by name.
std::string relations(const CLI::Option& option) {
  std::string text;
  const auto add = [&text](const char* verb, const std::set<CLI::Option*>& others) {
    std::vector<std::string> names;
    for (const CLI::Option* other : others) names.push_back("--" + other->get_lnames().at(0));
    std::sort(names.begin(), names.end());
    if (!names.empty()) text += std::string(" ") + verb + " " + joined(names, " and ") + ".";
  };
  add("Needs", option.get_needs());
  add("Excludes", option.get_excludes());
  return text;
}

OptionText textOf(const CLI::Option& option) {
  OptionText text;
  for (const std::string& name : option.get_snames()) text.names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) text.names.push_back("--" + name);
  const bool positional = option.get_positional();
  if (positional)
    text.value = option.get_name(true);
  else if (option.get_items_expected_max() > 0)
    text.value = option.get_type_name();
  text.words = knownWords(text);
  text.kind = kindOf(text);
  text.text = option.get_description() + ".";
  text.text += relations(option);
  text.group = option.get_group();
  text.required = option.get_required();
  text.repeated = option.get_items_expected_max() > 1;
  return text;
}

// Collects the options of `app` and of its groups. CLI11 represents a group as a nameless
// subcommand with a --help of its own.
void collect(CLI::App& app, bool isGroup, CommandText& command) {
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_group().empty() || (isGroup && option == app.get_help_ptr())) continue;
    auto& list = option->get_positional() ? command.positionals : command.options;
    list.push_back(textOf(*option));
    if (isGroup) list.back().group = app.get_group();
  }
  for (CLI::App* group : app.get_subcommands([](CLI::App* a) { return a->get_name().empty(); }))
    collect(*group, true, command);
}

CommandText textOf(CLI::App& app) {
  CommandText command{app.get_name(), app.get_description(), {}, {}, {}, {}};
  auto footer = split(app.get_footer(), "Exit status: ");
  footer.resize(2);
  command.footer = footer[0];
  command.exitStatus = footer[1];
  collect(app, false, command);
  return command;
}

}  // namespace

ProgramText textOf(CLI::App& program, const std::string& date) {
  ProgramText text{textOf(program), {}, "vistrel " VISTREL_PROGRAM_VERSION, date};
  for (CLI::App* command :
       program.get_subcommands([](CLI::App* a) { return !a->get_name().empty(); }))
    text.commands.push_back(textOf(*command));
  return text;
}

std::string joined(const std::vector<std::string>& words, const std::string& between) {
  return CLI::detail::join(words, between);
}

std::vector<std::string> split(const std::string& text, const std::string& between) {
  std::vector<std::string> words;
  for (size_t begin = 0; begin < text.size();) {
    const size_t end = std::min(text.find(between, begin), text.size());
    words.push_back(text.substr(begin, end - begin));
    begin = end + between.size();
  }
  return words;
}

std::string escaped(const std::string& text, const std::string& special, char escape) {
  std::string result;
  for (const char c : text) {
    if (special.find(c) != std::string::npos) result += escape;
    result += c;
  }
  return result;
}

std::string filled(std::string text, const std::map<std::string, std::string>& values) {
  for (const auto& [key, value] : values) text.replace(text.find(key), key.size(), value);
  return text;
}

std::ofstream create(const std::filesystem::path& file) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream out;
  out.exceptions(std::ios::failbit | std::ios::badbit);
  out.open(file);
  return out;
}

}  // namespace vistrel::app
