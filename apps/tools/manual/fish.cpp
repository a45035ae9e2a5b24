// The completion for fish.
#include <fmt/format.h>

#include "apps/tools/manual/description.h"

namespace vistrel::app {
namespace {

std::string quoted(const std::string& text) { return fmt::format("'{}'", escaped(text, "\\'")); }

// -x: a value, but no files. -r -F: a value, which may be a file.
std::string value(const OptionText& option) {
  const std::string words = option.words.empty() ? "" : " -a " + quoted(joined(option.words, " "));
  switch (option.kind) {
    case Value::kNone: return "";
    case Value::kFile: return " -r -F" + words;
    case Value::kFolder: return " -x -a '(__fish_complete_directories)'";
    default: return " -x" + words;
  }
}

void writeOptions(const CommandText& command, const std::string& condition, std::ostream& out) {
  for (const OptionText& option : command.options) {
    out << "complete -c vistrel -n " << quoted(condition);
    for (const std::string& name : option.names)
      out << (name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1));
    out << value(option) << " -d " << quoted(option.text) << "\n";
  }
}

}  // namespace

void writeFish(const ProgramText& program, const std::filesystem::path& folder) {
  std::ofstream out = create(folder / "fish/vistrel.fish");
  out << "# fish completion for vistrel\n";
  const std::string first = "__fish_use_subcommand";
  for (const CommandText& command : program.commands)
    out << "complete -c vistrel -n " << first << " -f -a " << command.name << " -d "
        << quoted(command.text) << "\n";
  writeOptions(program.self, first, out);
  for (const CommandText& command : program.commands) {
    const std::string condition = "__fish_seen_subcommand_from " + command.name;
    const auto& positionals = command.positionals;
    if (positionals.empty() || !positionals.front().words.empty())
      out << "complete -c vistrel -n " << quoted(condition) << " -f"
          << (positionals.empty() ? "" : " -a " + quoted(joined(positionals.front().words, " ")))
          << "\n";
    writeOptions(command, condition, out);
  }
}

}  // namespace vistrel::app
