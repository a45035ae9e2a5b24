// Memory under guard. A block of exactly the bytes that a call may touch lies against a page
// that nobody may touch, with its end or with its beginning, so that even a read whose result
// is thrown away faults. The open side carries a known colour that must stay.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace vistrel::core::check {

// Rows of bytes. The function is handed the address `origin` bytes before the first one.
struct Shape {
  size_t origin = 0;
  size_t rows = 0;
  size_t rowBytes = 0;
  size_t pitch = 0;

  static Shape packed(size_t bytes) { return {0, 1, bytes, bytes}; }
  size_t span() const { return rows == 0 ? 0 : (rows - 1) * pitch + rowBytes; }
};

enum class Edge { end, start };

struct Block {
  Shape shape;
  uint8_t* begin = nullptr;  // the first byte that may be touched
  uint8_t* zone = nullptr;   // where the known colour lies, round or between the bytes
  size_t zoneRows = 0, zoneBytes = 0, zonePitch = 0;

  template <class T = uint8_t>
  T* as() const {
    return reinterpret_cast<T*>(reinterpret_cast<uintptr_t>(begin) - shape.origin);
  }
  uint8_t* row(size_t r) const { return begin + r * shape.pitch; }

  void paint(uint8_t colour) const;
  // Distance from `begin` of the first byte outside the block that lost its colour.
  std::optional<ptrdiff_t> stain(uint8_t colour) const;
  // Where an address lies, in words, if it is near the block.
  std::optional<std::string> describe(const uint8_t* address) const;
};

// A stretch of memory with a fence of untouchable pages on either side.
class Arena {
 public:
  explicit Arena(size_t bytes);
  ~Arena();
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  Block place(const Shape& shape, Edge edge) const;

 private:
  size_t room_;
  uint8_t* map_;
};

// Every other page is a fence: rows at this pitch lie against a fence each.
class FencedRows {
 public:
  static constexpr size_t kPage = 4096;
  static constexpr size_t kPitch = 2 * kPage;
  static constexpr size_t kRows = 256;

  FencedRows();
  ~FencedRows();
  FencedRows(const FencedRows&) = delete;
  FencedRows& operator=(const FencedRows&) = delete;

  static bool fits(const Shape& shape) {
    return shape.pitch == kPitch && shape.rowBytes <= kPage && shape.rows <= kRows;
  }
  Block place(const Shape& shape, Edge edge) const;

 private:
  uint8_t* map_;
};

}  // namespace vistrel::core::check
