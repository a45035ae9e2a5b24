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
std::string bashAction(const OptionText& option) {
  const std::string words = option.words.empty() ? "" : "words='" + joined(option.words, " ") + "'";
  if (option.kind == Value::kFile) return words.empty() ? "return" : words;
  if (option.kind == Value::kFolder) return "COMPREPLY=($(compgen -d -- \"$word\")); return";
  return (words.empty() ? "" : words + "; ") + "compopt +o default 2>/dev/null";
}

// Completes an argument that is no option.
std::string positionalAction(const CommandText& command) {
  const std::string words = joined(command.positionals.front().words, " ");
  if (words.empty()) return ":";
  return "compopt +o default 2>/dev/null; COMPREPLY=($(compgen -W '" + words + "' -- \"$word\"))";
}

std::string caseOf(const CommandText& command) {
  std::string text = "      " + command.name + ")\n        case $before in\n";
  for (const OptionText& option : command.options)
    if (option.kind != Value::kNone)
      text += "          " + joined(option.names, " | ") + ") " + bashAction(option) + " ;;\n";
  text += "          *)\n";
  if (!command.positionals.empty())
    text += "            [[ $word == -* ]] || { " + positionalAction(command) + "; return; }\n";
  return text + "            words='" + namesOf(command) + "' ;;\n        esac ;;\n";
}

constexpr const char* kScript = R"sh(# bash completion for vistrel
_vistrel() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} words=
  COMPREPLY=()
  if ((COMP_CWORD == 1)); then
    words='@COMMANDS@'
    compopt +o default 2>/dev/null
  else
    case ${COMP_WORDS[1]} in
@CASES@    esac
  fi
  COMPREPLY=($(compgen -W "$words" -- "$word"))
}
complete -o default -F _vistrel vistrel
)sh";

}  // namespace

void writeBash(const ProgramText& program, const std::filesystem::path& folder) {
  std::string commands, cases;
  for (const CommandText& command : program.commands) {
    commands += command.name + " ";
    cases += caseOf(command);
  }
  commands += namesOf(program.self);
  create(folder / "bash/vistrel") << filled(kScript,
                                            {{"@COMMANDS@", commands}, {"@CASES@", cases}});
}

}  // namespace vistrel::app
