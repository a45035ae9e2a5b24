// The names of files that are not finished, where a signal handler can read them.
#pragma once

#include <string>

namespace vistrel::app {

// A file of mode 0600 with a name of its own in `folder`, which a signal removes. Any number of
// threads may have some, 256 altogether.
class Unfinished {
 public:
  // `descriptor` is below 0 where the file can't be made; errno tells why.
  explicit Unfinished(const std::string& folder);
  ~Unfinished();  // removes the file
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;

  int descriptor() const { return descriptor_; }

  // Gives the file its name; false where that fails. Then there is nothing to remove any more.
  bool rename(const char* name);

 private:
  bool lock();

  struct Slot;
  static Slot slots_[];
  friend void removeAllUnfinished();

  Slot* slot_ = nullptr;
  int descriptor_ = -1;
  int lock_ = -1;
};

// Removes what processes left that were killed. Files of those that still run are locked.
void removeAbandonedIn(const std::string& folder);

// For signal handlers: no file is begun from here on, and those that there are go away.
void removeAllUnfinished();

// The signals that end the program.
inline constexpr int kEndingSignals[] = {2, 15, 1};  // SIGINT, SIGTERM, SIGHUP

}  // namespace vistrel::app
