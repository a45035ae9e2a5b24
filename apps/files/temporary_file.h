// Temporary files, with their names where a signal handler can read them.
#pragma once

#include <string>

namespace vistrel::app {

// A file of mode 0600 with a unique name in `folder`. A terminating signal removes it. Any number
// of threads may hold such files, up to 256 in all.
class TemporaryFile {
 public:
  // If the file can't be created, descriptor() is negative and errno has the reason.
  explicit TemporaryFile(const std::string& folder);
  ~TemporaryFile();  // removes the file
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  int descriptor() const { return descriptor_; }

  // Gives the file its final name and returns true; from then on there is nothing to remove.
  // Returns false on failure.
  bool rename(const char* name);

 private:
  bool lock();

  struct Entry;
  static Entry entries_[];
  friend void removeAllTemporaryFiles();

  Entry* entry_ = nullptr;
  int descriptor_ = -1;
  int lock_ = -1;
};

// Removes files left behind by killed processes. Running processes keep their files locked.
void removeStaleFiles(const std::string& folder);

// For signal handlers: removes all files and keeps further ones from being created.
void removeAllTemporaryFiles();

// The signals that end the program.
inline constexpr int kTerminatingSignals[] = {2, 15, 1};  // SIGINT, SIGTERM, SIGHUP

}  // namespace vistrel::app
