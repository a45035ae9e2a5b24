// The files of a run: ensures that it overwrites no input and writes no file twice.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vistrel::app {

// Add all files that are read, then all that are written, before writing anything. Two names are
// the same file if they lead to the same place, for instance through a link. Standard output does
// not count as a file.
class RunFiles {
 public:
  void addInput(const std::filesystem::path& path);
  void addInputs(const std::vector<std::string>& paths);

  // A file that an option names, for instance a curve.
  void addRead(const std::string& option, const std::filesystem::path& path);

  // A file that is written because of an option; `input` is what it is made from, if one option
  // leads to several files. Throws ProgramError (usage) if the file has already been added.
  void addWritten(const std::string& option, const std::filesystem::path& path,
                  const std::string& input = "");

 private:
  struct Use {
    std::string name;   // as the user knows it
    std::string input;  // of a written file
  };

  void addExisting(const std::filesystem::path& path, const std::string& name);
  std::string placeOf(const std::filesystem::path& path);
  const std::string& canonicalFolder(const std::filesystem::path& folder);

  std::map<std::string, Use> uses_;  // by identity
  std::map<std::filesystem::path, std::string> folders_;
};

}  // namespace vistrel::app
