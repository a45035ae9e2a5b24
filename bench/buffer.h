// Memory for frames and results: aligned to cache lines, already touched, shared by its users.
#pragma once

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace vistrel::core::bench {

template <class T>
using Buffer = std::shared_ptr<T[]>;

template <class T>
Buffer<T> allocate(size_t count) {
  constexpr size_t kLine = 64;
  const size_t bytes = (count * sizeof(T) + kLine - 1) / kLine * kLine;
  void* const block = std::aligned_alloc(kLine, bytes);
  if (!block) throw std::bad_alloc();
  std::memset(block, 0, bytes);
  return Buffer<T>(static_cast<T*>(block), [](T* p) { std::free(p); });
}

}  // namespace vistrel::core::bench
