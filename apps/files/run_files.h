// The files of a run: it writes over none that it needs, and none twice.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vistrel::app {

// Told of all files that are read and then of all that are written, before anything is written.
// Two names are one file where a link or another way leads to the same place. Standard output is
// no file.
class RunFiles {
 public:
  void addInput(const std::filesystem::path& path);
  void addInputs(const std::vector<std::string>& paths);

  // A file that an option names, e.g. a curve.
  void addRead(const std::string& option, const std::filesystem::path& path);

  // A file that an option leads to; `input` is what it is made of, where that tells files of one
  // option apart. Throws Failure (usage) where it has been told of already.
  void addWritten(const std::string& option, const std::filesystem::path& path,
                  const std::string& input = "");

 private:
  struct Use {
    std::string name;   // as users know it
    std::string input;  // of a file that is written
  };

  void addThere(const std::filesystem::path& path, const std::string& name);
  std::string placeOf(const std::filesystem::path& path);
  const std::string& canonicalFolder(const std::filesystem::path& folder);

  std::map<std::string, Use> uses_;  // by identity
  std::map<std::filesystem::path, std::string> folders_;
};

}  // namespace vistrel::app
