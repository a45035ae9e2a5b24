// Runs the program in a temporary folder and captures its output.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vistrel {

struct Finished {
  int status;  // exit status; 128 plus the signal's number after a signal
  std::string out, err;
  std::string summary;  // the line that sums up a run of many frames, which `err` then lacks
};

// A folder that is removed with its object. Names are relative to it.
class Scratch {
 public:
  Scratch();
  ~Scratch();
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  std::filesystem::path operator/(const std::string& name) const { return folder_ / name; }
  void write(const std::string& name, const std::string& bytes) const;
  std::string read(const std::string& name) const;
  std::vector<std::string> names() const;  // of all files in it, sorted

  // Runs a command there; `prepare` is called in the new process before it starts.
  Finished run(std::vector<std::string> command, const std::function<void()>& prepare = {}) const;

  // Runs the program with these arguments, split at spaces; '' is an empty one.
  Finished vistrel(const std::string& arguments, const std::function<void()>& prepare = {}) const;

 private:
  std::filesystem::path folder_;
};

}  // namespace vistrel
