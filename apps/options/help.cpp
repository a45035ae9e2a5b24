#include "apps/options/help.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <utility>

namespace vistrel::app {
namespace {

constexpr size_t kWidth = 80, kColumn = 28;

// A help of more lines, which no screen shows at once, only names these options.
constexpr long kLines = 40;
constexpr const char* kRare[] = {"align",    "bin-means", "chroma", "compression", "continuous",
                                 "dark",     "endian",    "flat",   "format",      "fps",
                                 "frame",    "gray",      "hot",    "json",        "keep-going",
                                 "manifest", "mask",      "mosaic", "orient",      "progress",
                                 "quality",  "quiet",     "range",  "recursive",   "shard",
                                 "skip",     "stride",    "type",   "white",       "window"};

struct Section {
  std::string title, lines;
  std::string rare;  // "--align, --skip"
};

bool takesMany(const CLI::Option* option) {
  return option->get_expected_max() == CLI::detail::expected_max_vector_size;
}

// "-o,--output OUT", "IN..."
std::string termOf(const CLI::Option* option) {
  if (option->get_positional()) return option->get_name(true) + (takesMany(option) ? "..." : "");
  const bool flag = option->get_type_size() == 0;
  return option->get_name(false, true) + (flag ? "" : " " + option->get_type_name());
}

// Two columns; a term that is too long for the left one gets a line of its own.
std::string entry(const std::string& term, const std::string& meaning) {
  std::string text, line = "  " + term;
  if (line.size() + 2 > kColumn) text = std::exchange(line, "") + "\n";
  line.resize(kColumn, ' ');
  std::istringstream words(meaning);
  for (std::string word; words >> word;) {
    if (line.size() + word.size() > kWidth) {
      text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
      line.assign(kColumn, ' ');
    }
    line += word + " ";
  }
  return text + line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

Section& sectionOf(std::vector<Section>& sections, const std::string& title) {
  const auto same = std::find_if(sections.begin(), sections.end(),
                                 [&title](const Section& s) { return s.title == title; });
  return same != sections.end() ? *same : sections.emplace_back(Section{title, "", ""});
}

bool isRare(const CLI::Option* option) {
  const auto isName = [option](const char* name) { return option->check_lname(name); };
  return std::any_of(std::begin(kRare), std::end(kRare), isName);
}

void add(Section& section, const CLI::Option* option, bool all) {
  if (all || !isRare(option))
    section.lines += entry(termOf(option), option->get_description());
  else
    section.rare += (section.rare.empty() ? "" : ", ") + option->get_name();
}

// CLI11 represents an option group as a subcommand without a name.
bool isOptionGroup(const CLI::App& app) { return app.get_name().empty() && app.get_parent(); }

void collect(const CLI::App& app, bool all, std::vector<Section>& sections) {
  for (const CLI::Option* option : app.get_options({}))
    if (!option->get_positional() && option != app.get_help_ptr())
      add(sectionOf(sections, isOptionGroup(app) ? app.get_group() : option->get_group()), option,
          all);
  for (const CLI::App* part : app.get_subcommands({})) {
    if (isOptionGroup(*part))
      collect(*part, all, sections);
    else
      sectionOf(sections, "Commands").lines += entry(part->get_name(), part->get_description());
  }
}

std::string usageOf(const CLI::App& app, const std::string& name) {
  std::string usage = "Usage: " + name + (app.get_parent() ? "" : " COMMAND");
  for (const CLI::Option* option : app.get_options({}))
    if (option->get_required())
      usage += " " + (option->get_positional()
                          ? termOf(option)
                          : option->get_name(false, false) + " " + option->get_type_name());
  return usage + " [OPTIONS]\n";
}

// Describes all options, or leaves the rare ones to the manual.
std::string helpOf(const CLI::App& app, const std::string& name, bool all) {
  std::string positionals;
  for (const CLI::Option* option : app.get_options({}))
    if (option->get_positional()) positionals += entry(termOf(option), option->get_description());
  std::vector<Section> sections;
  collect(app, all, sections);
  std::string text = app.get_description() + "\n" + usageOf(app, name) + positionals;
  for (const Section& section : sections) {
    text += section.title + ":\n" + section.lines;
    if (!section.rare.empty()) text += entry("also", section.rare);
  }
  if (!all) text += fmt::format("`man vistrel-{}` describes all options.\n", app.get_name());
  return text + (app.get_footer().empty() ? "" : "\n" + app.get_footer() + "\n");
}

std::string help(const CLI::App* app, std::string name, CLI::AppFormatMode) {
  const std::string text = helpOf(*app, name, true);
  const bool fits = std::count(text.begin(), text.end(), '\n') <= kLines;
  return fits ? text : helpOf(*app, name, false);
}

}  // namespace

void setHelp(CLI::App& program) { program.formatter_fn(help); }

}  // namespace vistrel::app
