// Man pages: one for the program and one for each command.
#include <fmt/format.h>

#include <algorithm>
#include <cctype>

#include "apps/tools/manual/description.h"
#include "apps/tools/manual/details.h"

namespace vistrel::app {
namespace {

// Escapes text for roff.
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

// Lines may end between the words of a choice.
std::string breakable(std::string text) {
  for (size_t at = 0; (at = text.find('|', at)) != text.npos; at += 3) text.replace(at, 1, "|\\:");
  return text;
}

std::string trimmed(const std::string& line) {
  const size_t begin = line.find_first_not_of(' ');
  return begin == std::string::npos ? "" : line.substr(begin);
}

class Page {
 public:
  Page(const std::filesystem::path& folder, const std::string& name, const ProgramText& program)
      : out_(create(folder / "man1" / (name + ".1"))) {
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
    if (!option.value.empty())
      tag.append(tag.empty() ? "" : " ").append(breakable(italic(option.value)));
    out_ << ".TP\n" << tag << (option.repeated ? " ...\n" : "\n") << roff(option.text);
    if (option.required) out_ << " Required.";
    out_ << "\n";
  }

  // Texts with empty lines between them.
  void paragraphs(const std::string& text) {
    for (const std::string& part : split(text, "\n\n")) {
      line(".PP");
      paragraph(part);
    }
  }

  void paragraph(const std::string& text) {
    for (const std::string& line : split(text, "\n")) out_ << roff(trimmed(line)) << "\n";
  }

  // Writes either the paragraphs with examples or the others.
  void footer(const std::string& text, bool examples) {
    for (const std::string& part : split(text, "\n\n")) {
      if ((part.rfind("Example", 0) == 0) != examples) continue;
      line(examples ? ".SH EXAMPLES\n.nf" : ".PP");
      paragraph(examples ? part.substr(part.find('\n') + 1) : part);
      if (examples) line(".fi");
    }
  }

 private:
  std::ofstream out_;
};

void writeFiles(const std::vector<FileText>& files, Page& page) {
  if (files.empty()) return;
  page.section("FILES");
  for (const FileText& file : files)
    page.line(".TP\n" + italic(file.name) + "\n" + roff(file.text) + ".");
}

// Writes options by group, in order of first appearance. "Options" is for those without a group.
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

// Required arguments as they are typed, the rest in brackets.
std::string synopsisOf(const CommandText& command) {
  std::string text = bold("vistrel " + command.name);
  for (const OptionText& p : command.positionals)
    text += " " + (p.required ? italic(p.value) : "[" + italic(p.value) + "]") +
            (p.repeated ? "..." : "");
  for (const OptionText& o : command.options)
    if (o.required) text += " " + bold(o.names.back()) + " " + italic(o.value);
  return text + " [" + italic("OPTION") + "]...";
}

// A command without an exit status section of its own gets the program's.
void writeEnd(const CommandText& command, const ProgramText& program, Page& page) {
  page.section("EXIT STATUS");
  page.paragraph(command.exitStatus.empty() ? program.self.exitStatus : command.exitStatus);
  page.footer(command.footer, true);
}

void writeCommand(const CommandText& command, const ProgramText& program,
                  const std::filesystem::path& folder) {
  Page page(folder, "vistrel-" + command.name, program);
  page.section("NAME");
  page.line(roff("vistrel-" + command.name) + " \\- " + roff(command.text));
  page.section("SYNOPSIS");
  page.line(synopsisOf(command));
  page.section("DESCRIPTION");
  page.line(roff(command.text) + ".");
  const Details details = detailsOf(command.name);
  page.paragraphs(details.description);
  page.footer(command.footer, false);
  page.section("OPTIONS");
  for (const OptionText& positional : command.positionals) page.option(positional);
  writeOptions(command, page);
  writeFiles(details.files, page);
  writeEnd(command, program, page);
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
  const Details details = detailsOf(program.self.name);
  page.section("DESCRIPTION");
  page.paragraphs(details.description);
  page.section("COMMANDS");
  for (const CommandText& command : program.commands)
    page.line(".TP\n" + bold("vistrel-" + command.name) + "(1)\n" + roff(command.text) + ".");
  page.section("OPTIONS");
  for (const OptionText& option : program.self.options) page.option(option);
  writeFiles(details.files, page);
  writeEnd(program.self, program, page);
}

}  // namespace

void writeManPages(const ProgramText& program, const std::filesystem::path& folder) {
  writeProgram(program, folder);
  for (const CommandText& command : program.commands) writeCommand(command, program, folder);
}

}  // namespace vistrel::app
