// The memory of this process that is in use.
#pragma once

#include <unistd.h>

#include <fstream>

namespace vistrel::test {

inline long residentKiB() {
  long pages = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return resident * sysconf(_SC_PAGESIZE) / 1024;
}

}  // namespace vistrel::test
