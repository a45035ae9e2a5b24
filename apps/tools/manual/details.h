// What man pages say beyond --help.
#pragma once

#include <string>
#include <vector>

namespace vistrel::app {

struct FileText {
  std::string name, text;
};

struct Details {
  std::string description;  // paragraphs
  std::vector<FileText> files;
};

// Of a command, or of the program if `command` is its own name; empty if there is nothing to add.
Details detailsOf(const std::string& command);

}  // namespace vistrel::app
