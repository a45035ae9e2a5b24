// Intercepts the library's calls of malloc, calloc and free.
#pragma once

#include <cstddef>
#include <vector>

namespace vistrel::core::test {

// During its lifetime, records what is allocated and freed, fills new blocks with 0xCD, and fails
// on demand.
class Allocations {
 public:
  Allocations();
  ~Allocations();
  Allocations(const Allocations&) = delete;
  Allocations& operator=(const Allocations&) = delete;

  std::vector<size_t> sizes;  // of the requested blocks, in order
  std::vector<void*> freed;   // in order, without null pointers
  bool fail = false;
};

}  // namespace vistrel::core::test
