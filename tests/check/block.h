// Memory with guard pages. A block has exactly the bytes that a call may touch. Its end or its
// beginning lies against a protected page, so that even a read whose result is discarded faults.
// The bytes on its other side hold a canary value, which no call may change.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace vistrel::core::check {

// Rows of bytes. The function under test gets the address `origin` bytes before the first one.
struct Shape {
  size_t origin = 0;
  size_t rows = 0;
  size_t rowBytes = 0;
  size_t pitch = 0;

  static Shape contiguous(size_t bytes) { return {0, 1, bytes, bytes}; }
  size_t span() const { return rows == 0 ? 0 : (rows - 1) * pitch + rowBytes; }
};

enum class Edge { end, start };

struct Block {
  Shape shape;
  uint8_t* begin = nullptr;  // the first byte that may be touched
  uint8_t* zone = nullptr;   // holds the canary, around the block and between its rows
  size_t zoneRows = 0, zoneBytes = 0, zonePitch = 0;

  template <class T = uint8_t>
  T* as() const {
    return reinterpret_cast<T*>(reinterpret_cast<uintptr_t>(begin) - shape.origin);
  }
  uint8_t* row(size_t r) const { return begin + r * shape.pitch; }

  void writeCanary(uint8_t canary) const;
  // Distance from `begin` of the first byte outside the block that is not the canary.
  std::optional<ptrdiff_t> findCorruption(uint8_t canary) const;
  // Describes where an address lies, if it is near the block.
  std::optional<std::string> describe(const uint8_t* address) const;
};

// A memory area between guard pages.
class GuardedMemory {
 public:
  explicit GuardedMemory(size_t bytes);
  ~GuardedMemory();
  GuardedMemory(const GuardedMemory&) = delete;
  GuardedMemory& operator=(const GuardedMemory&) = delete;

  Block place(const Shape& shape, Edge edge) const;

 private:
  size_t capacity_;
  uint8_t* map_;
};

// Every other page is a guard page: at this pitch, each row lies against one.
class GuardPageRows {
 public:
  static constexpr size_t kPage = 4096;
  static constexpr size_t kPitch = 2 * kPage;
  static constexpr size_t kRows = 256;

  GuardPageRows();
  ~GuardPageRows();
  GuardPageRows(const GuardPageRows&) = delete;
  GuardPageRows& operator=(const GuardPageRows&) = delete;

  static bool fits(const Shape& shape) {
    return shape.pitch == kPitch && shape.rowBytes <= kPage && shape.rows <= kRows;
  }
  Block place(const Shape& shape, Edge edge) const;

 private:
  uint8_t* map_;
};

}  // namespace vistrel::core::check
