// Names of the user's folders by the XDG rules; nothing on disk is read.
#pragma once

#include <istream>
#include <string>

namespace vistrel::core {

// Values of HOME, XDG_CONFIG_HOME and XDG_DATA_HOME, empty if unset. A path that is not absolute
// counts as unset.
struct XdgVariables {
  std::string home, configHome, dataHome;
};

// Both are empty if no variable names the folder or the file.
std::string xdgDataFolder(const XdgVariables& variables);
std::string xdgUserDirsFile(const XdgVariables& variables);

// userDirs is the text of that file; its last valid XDG_DOCUMENTS_DIR counts.
std::string xdgDocumentsFolder(const XdgVariables& variables, std::istream& userDirs);

}  // namespace vistrel::core
