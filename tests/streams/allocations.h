// The library's calls of malloc, calloc and free, which this program links through here.
#pragma once

#include <cstddef>
#include <vector>

namespace vistrel::core::test {

// While it lives: sees what is allocated and freed, fills new blocks with 0xCD, and fails on
// demand.
class Allocations {
 public:
  Allocations();
  ~Allocations();
  Allocations(const Allocations&) = delete;
  Allocations& operator=(const Allocations&) = delete;

  std::vector<size_t> sizes;  // of the blocks asked for, in order
  std::vector<void*> freed;   // in order, null pointers left out
  bool fail = false;
};

}  // namespace vistrel::core::test
