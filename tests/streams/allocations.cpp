#include "tests/streams/allocations.h"

#include <cstdlib>
#include <cstring>

using vistrel::core::test::Allocations;

namespace {
Allocations* watching = nullptr;
}

extern "C" {

void* __real_malloc(size_t bytes);
void* __real_calloc(size_t count, size_t bytes);
void __real_free(void* block);

void* __wrap_malloc(size_t bytes) {
  if (!watching) return __real_malloc(bytes);
  watching->sizes.push_back(bytes);
  void* block = watching->fail ? nullptr : __real_malloc(bytes);
  if (block) std::memset(block, 0xCD, bytes);
  return block;
}

void* __wrap_calloc(size_t count, size_t bytes) {
  if (!watching) return __real_calloc(count, bytes);
  watching->sizes.push_back(count * bytes);
  return watching->fail ? nullptr : __real_calloc(count, bytes);
}

void __wrap_free(void* block) {
  if (watching && block) watching->freed.push_back(block);
  __real_free(block);
}

}  // extern "C"

namespace vistrel::core::test {

Allocations::Allocations() { watching = this; }
Allocations::~Allocations() { watching = nullptr; }

}  // namespace vistrel::core::test
