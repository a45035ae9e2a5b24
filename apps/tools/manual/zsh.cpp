// The completion for zsh, based on _arguments.
#include <fmt/format.h>

#include "apps/tools/manual/description.h"

namespace vistrel::app {
namespace {

// Quotes text for the shell.
std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return result + "'";
}

std::string action(const OptionText& option) {
  const std::string words = fmt::format("({})", joined(option.words, " "));
  switch (option.kind) {
    case Value::kWords: return words;
    case Value::kFile:
      return option.words.empty()
                 ? "_files"
                 : R"({_alternative "words\:value\:)" + words + R"(" "files\:file\:_files"})";
    case Value::kFolder: return "_files -/";
    default: return option.words.empty() ? " " : words;
  }
}

// '(-o --output)'{-o,--output}'[text]:OUT:_files'
std::string argument(const OptionText& option) {
  const std::string value =
      option.value.empty() ? ""
                           : fmt::format(":{}:{}", escaped(option.value, ":[]"), action(option));
  if (option.names.empty()) return quoted((option.repeated ? "*" : "") + value);
  const std::string text = fmt::format("[{}]{}", escaped(option.text, ":[]"), value);
  const std::string others = option.repeated ? "*" : fmt::format("({})", joined(option.names, " "));
  if (option.names.size() == 1) return quoted(others + option.names[0] + text);
  return quoted(others) + "{" + joined(option.names, ",") + "}" + quoted(text);
}

std::string arguments(const CommandText& command) {
  std::string list;
  for (const OptionText& option : command.options) list += " \\\n        " + argument(option);
  for (const OptionText& positional : command.positionals)
    list += " \\\n        " + argument(positional);
  return list;
}

}  // namespace

void writeZsh(const ProgramText& program, const std::filesystem::path& folder) {
  std::ofstream out = create(folder / "zsh/_vistrel");
  out << "#compdef vistrel\n"
         "_vistrel() {\n"
         "  local context state state_descr line\n"
         "  typeset -A opt_args\n"
         "  _arguments -C '1:command:->command' '*::argument:->argument'"
      << arguments(program.self)
      << "\n"
         "  case $state in\n"
         "    command)\n"
         "      local -a commands=(\n";
  for (const CommandText& command : program.commands)
    out << "        " << quoted(command.name + ":" + escaped(command.text, ":")) << "\n";
  out << "      )\n"
         "      _describe command commands ;;\n"
         "    argument)\n"
         "      case $words[1] in\n";
  for (const CommandText& command : program.commands)
    out << "        " << command.name << ") _arguments" << arguments(command) << " ;;\n";
  out << "      esac ;;\n"
         "  esac\n"
         "}\n"
         "_vistrel \"$@\"\n";
}

}  // namespace vistrel::app
