#include "tests/host/watched_malloc.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>

extern "C" {
void* __libc_malloc(size_t bytes);
void* __libc_calloc(size_t count, size_t bytes);
void* __libc_realloc(void* block, size_t bytes);
void* __libc_memalign(size_t alignment, size_t bytes);
void __libc_free(void* block);
}

namespace vistrel {
namespace {

void addBytes(long bytes) {
  g_watch.bytes += bytes;
  g_watch.peak = std::max(g_watch.peak, g_watch.bytes);
}

void* counted(void* block) {
  if (!block) return nullptr;
  ++g_live;
  addBytes(static_cast<long>(malloc_usable_size(block)));
  if (g_watch.succeededErrno) errno = g_watch.succeededErrno;
  return block;
}

bool fails() {
  Watch& w = g_watch;
  if (!w.on) return false;
  ++w.calls;
  if (w.calls != w.failAt && !(w.fromThenOn && w.calls > w.failAt)) return false;
  ++w.failed;
  errno = w.failedErrno;
  return true;
}

}  // namespace
}  // namespace vistrel

using namespace vistrel;

extern "C" {
void* malloc(size_t bytes) { return fails() ? nullptr : counted(__libc_malloc(bytes)); }
void* calloc(size_t count, size_t bytes) {
  return fails() ? nullptr : counted(__libc_calloc(count, bytes));
}
void* realloc(void* block, size_t bytes) {
  if (fails()) return nullptr;
  void* const moved = __libc_realloc(block, bytes);
  if (!block) counted(moved);
  return moved;
}
void* aligned_alloc(size_t alignment, size_t bytes) {
  return fails() ? nullptr : counted(__libc_memalign(alignment, bytes));
}
void free(void* block) {
  if (block) --g_live, addBytes(-static_cast<long>(malloc_usable_size(block)));
  __libc_free(block);
}
}
