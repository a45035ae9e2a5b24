#include "tests/check/pages.h"

#include <sys/mman.h>

#include <new>

namespace vistrel::core::check {

uint8_t* reservePages(size_t bytes) {
  void* map = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (map == MAP_FAILED) throw std::bad_alloc();
  return static_cast<uint8_t*>(map);
}

void openPages(uint8_t* from, size_t bytes) {
  if (mprotect(from, bytes, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
}

void releasePages(uint8_t* pages, size_t bytes) { munmap(pages, bytes); }

}  // namespace vistrel::core::check
