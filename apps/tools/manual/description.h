// The content of man pages and completions, extracted from the description of the command line.
#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vistrel::app {

// What kind of value an option takes.
enum class Value { kNone, kWords, kFile, kFolder, kOther };

struct OptionText {
  std::vector<std::string> names;  // "-o", "--output"; empty for a positional
  std::string value;               // placeholder of the value; empty for a flag
  Value kind = Value::kNone;
  std::vector<std::string> words;  // values to offer
  std::string text;
  std::string group;  // the title above it
  bool required = false, repeated = false;
};

struct CommandText {
  std::string name, text;
  std::string footer, exitStatus;  // paragraphs; the sentence with the codes
  std::vector<OptionText> options, positionals;
};

struct ProgramText {
  CommandText self;
  std::vector<CommandText> commands;
  std::string version;  // "vistrel 1.2.3"
  std::string date;     // of the release; may be empty
};

ProgramText textOf(CLI::App& program, const std::string& date);

// Joins words, and splits text.
std::string joined(const std::vector<std::string>& words, const std::string& between);
std::vector<std::string> split(const std::string& text, const std::string& between);

// `text` with `escape` before each character of `special`.
std::string escaped(const std::string& text, const std::string& special, char escape = '\\');

// `text` with each key replaced by its value.
std::string filled(std::string text, const std::map<std::string, std::string>& values);

// Creates a file, and its folder if necessary. Throws on failure, also of later writes.
std::ofstream create(const std::filesystem::path& file);

void writeManPages(const ProgramText& program, const std::filesystem::path& folder);
void writeBash(const ProgramText& program, const std::filesystem::path& folder);
void writeZsh(const ProgramText& program, const std::filesystem::path& folder);
void writeFish(const ProgramText& program, const std::filesystem::path& folder);

}  // namespace vistrel::app
