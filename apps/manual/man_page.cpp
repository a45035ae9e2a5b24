// Man pages: one of the program, one of each command.
#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <fstream>

#include "apps/manual/description.h"

namespace vistrel::app {
namespace {

// Text as roff takes it literally.
std::string roff(const std::string& text) {
  std::string result;
  if (!text.empty() && (text[0] == '.' || text[0] == '\'')) result = "\\&";
  for (const char c : text) switch (c) {
      case '\\': result += "\\e"; break;
      case '-': result += "\\-"; break;
      case '\'': result += "\\(aq"; break;
      case '`': result += "\\(ga"; break;
      case '^': result += "\\(ha"; break;
      case '~': result += "\\(ti"; break;
      default: result += c;
    }
  return result;
}

std::string bold(const std::string& text) { return fmt::format("\\fB{}\\fR", roff(text)); }
std::string italic(const std::string& text) { return fmt::format("\\fI{}\\fR", roff(text)); }

std::string trimmed(const std::string& line) {
  const size_t begin = line.find_first_not_of(' ');
  return begin == std::string::npos ? "" : line.substr(begin);
}

class Page {
 public:
  Page(const std::filesystem::path& folder, const std::string& name, const ProgramText& program)
      : out_(folder / (name + ".1")) {
    out_.exceptions(std::ios::failbit | std::ios::badbit);
    std::string title = name;
    std::transform(title.begin(), title.end(), title.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    out_ << ".TH " << roff(title) << " 1 \"" << program.date << "\" \"" << program.version
         << "\" \"User Commands\"\n";
  }

  void section(const std::string& title) { out_ << ".SH " << title << "\n"; }
  void line(const std::string& line) { out_ << line << "\n"; }

  void option(const OptionText& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.names) names.push_back(bold(name));
    std::string tag = joined(names, ", ");
    if (!option.value.empty()) tag.append(tag.empty() ? "" : " ").append(italic(option.value));
    out_ << ".TP\n" << tag << (option.repeated ? " ...\n" : "\n") << roff(option.text);
    if (option.required) out_ << " Required.";
    out_ << "\n";
  }

  // Paragraphs of a footer: examples and the exit status get sections of their own.
  void footer(const std::vector<std::string>& paragraphs, bool sections) {
    for (const std::string& paragraph : paragraphs) {
      const auto lines = split(paragraph, "\n");
      const bool examples = lines[0].rfind("Example", 0) == 0;
      const bool status = lines[0].rfind("Exit status: ", 0) == 0;
      if ((examples || status) != sections) continue;
      if (examples)
        verbatim(lines);
      else if (status)
        filled("EXIT STATUS", lines, lines[0].find(": ") + 2);
      else
        filled("", lines, 0);
    }
  }

 private:
  void verbatim(const std::vector<std::string>& lines) {
    out_ << ".SH EXAMPLES\n.nf\n";
    for (size_t i = 1; i < lines.size(); ++i) out_ << roff(trimmed(lines[i])) << "\n";
    out_ << ".fi\n";
  }

  void filled(const std::string& title, const std::vector<std::string>& lines, size_t from) {
    out_ << (title.empty() ? ".PP" : ".SH " + title) << "\n";
    for (const std::string& line : lines) {
      out_ << roff(trimmed(line.substr(from))) << "\n";
      from = 0;
    }
  }

  std::ofstream out_;
};

// By groups, each at the place of its first option. "Options" is that of those that have none.
void writeOptions(const CommandText& command, Page& page) {
  std::vector<std::string> groups{"Options"};
  for (const OptionText& option : command.options)
    if (std::find(groups.begin(), groups.end(), option.group) == groups.end())
      groups.push_back(option.group);
  for (const std::string& group : groups) {
    if (group != "Options") page.line(".SS " + roff(group));
    for (const OptionText& option : command.options)
      if (option.group == group) page.option(option);
  }
}

void writeCommand(const CommandText& command, const ProgramText& program,
                  const std::filesystem::path& folder) {
  Page page(folder, "vistrel-" + command.name, program);
  page.section("NAME");
  page.line(roff("vistrel-" + command.name) + " \\- " + roff(command.text));
  page.section("SYNOPSIS");
  page.line(bold("vistrel " + command.name) + " [" + italic("OPTION") + "]...");
  for (const OptionText& positional : command.positionals)
    page.line(italic(positional.value) + (positional.repeated ? "..." : ""));
  page.section("DESCRIPTION");
  page.line(roff(command.text) + ".");
  const auto paragraphs = split(command.footer, "\n\n");
  page.footer(paragraphs, false);
  page.section("OPTIONS");
  for (const OptionText& positional : command.positionals) page.option(positional);
  writeOptions(command, page);
  page.footer(paragraphs, true);
  page.section("SEE ALSO");
  page.line(bold("vistrel") + "(1)");
}

void writeProgram(const ProgramText& program, const std::filesystem::path& folder) {
  Page page(folder, "vistrel", program);
  page.section("NAME");
  page.line("vistrel \\- " + roff(program.self.text));
  page.section("SYNOPSIS");
  page.line(bold("vistrel") + " " + italic("COMMAND") + " [" + italic("OPTION") + "]... [" +
            italic("FILE") + "]...");
  page.section("COMMANDS");
  for (const CommandText& command : program.commands)
    page.line(".TP\n" + bold("vistrel-" + command.name) + "(1)\n" + roff(command.text) + ".");
  page.section("OPTIONS");
  for (const OptionText& option : program.self.options) page.option(option);
}

}  // namespace

void writeManPages(const ProgramText& program, const std::filesystem::path& folder) {
  const auto pages = folder / "man1";
  std::filesystem::create_directories(pages);
  writeProgram(program, pages);
  for (const CommandText& command : program.commands) writeCommand(command, program, pages);
}

}  // namespace vistrel::app
