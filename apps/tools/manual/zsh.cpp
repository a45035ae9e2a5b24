// The completion for zsh, based on _arguments.
#include <fmt/format.h>

#include "apps/tools/manual/description.h"

namespace vistrel::app {
namespace {

// Quotes text for the shell.
std::string zshQuoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return result + "'";
}

std::string zshAction(const OptionText& option) {
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
                           : fmt::format(":{}:{}", escaped(option.value, ":[]"), zshAction(option));
  if (option.names.empty()) return zshQuoted((option.repeated ? "*" : "") + value);
  const std::string text = fmt::format("[{}]{}", escaped(option.text, ":[]"), value);
  const std::string others = option.repeated ? "*" : fmt::format("({})", joined(option.names, " "));
  if (option.names.size() == 1) return zshQuoted(others + option.names[0] + text);
  return zshQuoted(others) + "{" + joined(option.names, ",") + "}" + zshQuoted(text);
}

std::string arguments(const CommandText& command) {
  std::string list;
  for (const OptionText& option : command.options) list += " \\\n        " + argument(option);
  for (const OptionText& positional : command.positionals)
    list += " \\\n        " + argument(positional);
  return list;
}

constexpr const char* kZshScript = R"sh(#compdef vistrel
_vistrel() {
  local context state state_descr line
  typeset -A opt_args
  _arguments -C '1:command:->command' '*::argument:->argument'@OPTIONS@
  case $state in
    command)
      local -a commands=(
@COMMANDS@      )
      _describe command commands ;;
    argument)
      case $words[1] in
@CASES@      esac ;;
  esac
}
_vistrel "$@"
)sh";

}  // namespace

void writeZsh(const ProgramText& program, const std::filesystem::path& folder) {
  std::string commands, cases;
  for (const CommandText& command : program.commands) {
    commands += "        " + zshQuoted(command.name + ":" + escaped(command.text, ":")) + "\n";
    cases += "        " + command.name + ") _arguments" + arguments(command) + " ;;\n";
  }
  create(folder / "zsh/_vistrel") << filled(
      kZshScript,
      {{"@OPTIONS@", arguments(program.self)}, {"@COMMANDS@", commands}, {"@CASES@", cases}});
}

}  // namespace vistrel::app
