#include "platform/xdg.h"

#include <algorithm>
#include <string_view>

namespace vistrel::core {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kHome = "$HOME";

bool isAbsolute(std::string_view path) { return path.starts_with('/'); }

std::string below(const std::string& home, std::string_view folder) {
  return isAbsolute(home) ? home + std::string(folder) : "";
}

// Removes the expected text and blanks before it from the line.
bool consume(std::string_view& line, std::string_view expected) {
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
  if (!line.starts_with(expected)) return false;
  line.remove_prefix(expected.size());
  return true;
}

// The text up to the closing quote; a backslash escapes the character after it.
std::string unquoted(std::string_view text) {
  std::string value;
  for (size_t i = 0; i < text.size() && text[i] != '"'; ++i) {
    if (text[i] == '\\' && i + 1 < text.size()) ++i;
    value += text[i];
  }
  return value;
}

// The folder that a line XDG_DOCUMENTS_DIR="$HOME/..." or "/..." names; empty for other lines.
std::string documentsEntry(std::string_view line, const std::string& home) {
  if (!consume(line, "XDG_DOCUMENTS_DIR") || !consume(line, "=") || !consume(line, "\"")) return "";
  const bool underHome = line.starts_with(kHome);
  if (underHome) line.remove_prefix(kHome.size());
  std::string folder = unquoted(line);
  if (!isAbsolute(folder)) return "";
  if (underHome) folder = below(home, folder);
  while (folder.size() > 1 && folder.ends_with('/')) folder.pop_back();
  return folder;
}

}  // namespace

std::string xdgDataFolder(const XdgVariables& variables) {
  return isAbsolute(variables.dataHome) ? variables.dataHome
                                        : below(variables.home, "/.local/share");
}

std::string xdgUserDirsFile(const XdgVariables& variables) {
  constexpr const char* kName = "/user-dirs.dirs";
  return isAbsolute(variables.configHome) ? variables.configHome + kName
                                          : below(variables.home, std::string("/.config") + kName);
}

std::string xdgDocumentsFolder(const XdgVariables& variables, std::istream& userDirs) {
  std::string folder = below(variables.home, "/Documents");
  for (std::string line; std::getline(userDirs, line);)
    if (std::string entry = documentsEntry(line, variables.home); !entry.empty()) folder = entry;
  return folder;
}

}  // namespace vistrel::core
