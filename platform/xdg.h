// The user's folders by the XDG rules, as names: nothing is looked up on disk.
#pragma once

#include <istream>
#include <string>

namespace vistrel::core {

// Values of HOME, XDG_CONFIG_HOME and XDG_DATA_HOME, empty where unset. Those that are not
// absolute count as unset.
struct XdgVariables {
  std::string home, configHome, dataHome;
};

// Empty where nothing names the folder or the file.
std::string xdgDataFolder(const XdgVariables& variables);
std::string xdgUserDirsFile(const XdgVariables& variables);

// userDirs: the text of that file; its last valid XDG_DOCUMENTS_DIR counts.
std::string xdgDocumentsFolder(const XdgVariables& variables, std::istream& userDirs);

}  // namespace vistrel::core
