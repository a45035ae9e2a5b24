// The completion for bash. It needs only bash itself.
#include "apps/tools/manual/description.h"

namespace vistrel::app {
namespace {

std::string namesOf(const CommandText& command) {
  std::vector<std::string> names;
  for (const OptionText& option : command.options)
    names.insert(names.end(), option.names.begin(), option.names.end());
  return joined(names, " ");
}

// Completes the value of an option. Without a suggestion, bash offers files by default.
std::string action(const OptionText& option) {
  const std::string words = option.words.empty() ? "" : "words='" + joined(option.words, " ") + "'";
  if (option.kind == Value::kFile) return words.empty() ? "return" : words;
  if (option.kind == Value::kFolder) return "COMPREPLY=($(compgen -d -- \"$word\")); return";
  return (words.empty() ? "" : words + "; ") + "compopt +o default 2>/dev/null";
}

void writeCommand(const CommandText& command, std::ostream& out) {
  out << "      " << command.name << ")\n";
  out << "        case $before in\n";
  for (const OptionText& option : command.options)
    if (option.kind != Value::kNone)
      out << "          " << joined(option.names, " | ") << ") " << action(option) << " ;;\n";
  out << "          *)\n";
  if (!command.positionals.empty()) out << "            [[ $word == -* ]] || return\n";
  out << "            words='" << namesOf(command) << "' ;;\n";
  out << "        esac ;;\n";
}

}  // namespace

void writeBash(const ProgramText& program, const std::filesystem::path& folder) {
  std::ofstream out = create(folder / "bash/vistrel");
  out << "# bash completion for vistrel\n"
         "_vistrel() {\n"
         "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} words=\n"
         "  COMPREPLY=()\n"
         "  if ((COMP_CWORD == 1)); then\n"
         "    words='";
  for (const CommandText& command : program.commands) out << command.name << " ";
  out << namesOf(program.self)
      << "'\n"
         "    compopt +o default 2>/dev/null\n"
         "  else\n"
         "    case ${COMP_WORDS[1]} in\n";
  for (const CommandText& command : program.commands) writeCommand(command, out);
  out << "    esac\n"
         "  fi\n"
         "  COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
         "}\n"
         "complete -o default -F _vistrel vistrel\n";
}

}  // namespace vistrel::app
