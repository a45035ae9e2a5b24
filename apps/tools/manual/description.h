// What man pages and completions tell: the command line's own description, in plain form.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vistrel::app {

// What may stand in place of a value.
enum class Value { kNone, kWords, kFile, kFolder, kOther };

struct OptionText {
  std::vector<std::string> names;  // "-o", "--output"; empty for a positional
  std::string value;               // how the value is called; empty for a flag
  Value kind = Value::kNone;
  std::vector<std::string> words;  // values to offer
  std::string text;
  std::string group;  // the title it stands under
  bool required = false, repeated = false;
};

struct CommandText {
  std::string name, text;
  std::string footer, exitStatus;  // paragraphs; the codes alone, in a sentence
  std::vector<OptionText> options, positionals;
};

struct ProgramText {
  CommandText self;
  std::vector<CommandText> commands;
  std::string version;  // "vistrel 1.2.3"
  std::string date;     // of the release; may be empty
};

ProgramText textOf(CLI::App& program, const std::string& date);

// "a, b, c", and back.
std::string joined(const std::vector<std::string>& words, const std::string& between);
std::vector<std::string> split(const std::string& text, const std::string& between);

// `text` with `escape` before each character that is one of `special`.
std::string escaped(const std::string& text, const std::string& special, char escape = '\\');

// A new file, in a new folder if need be. A failure throws.
std::ofstream create(const std::filesystem::path& file);

void writeManPages(const ProgramText& program, const std::filesystem::path& folder);
void writeBash(const ProgramText& program, const std::filesystem::path& folder);
void writeZsh(const ProgramText& program, const std::filesystem::path& folder);
void writeFish(const ProgramText& program, const std::filesystem::path& folder);

}  // namespace vistrel::app
