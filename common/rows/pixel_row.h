// The function that fills a row of pixels, as every level compiles it.
#pragma once

#include <cstddef>

#include "common/rows/half_rows.h"
#include "common/rows/nontemporal.h"

namespace vistrel::core {

// Reads finished pixels of a row, a piece at a time.
class PieceReader {
 public:
  static constexpr size_t kPiece = 256;  // pixels, about

  virtual void read(int y, size_t begin, size_t end) const = 0;

 protected:
  ~PieceReader() = default;
};

// Where the samples of a row are wanted once more while they are at hand, and what is fetched
// meanwhile.
template <class T>
struct RowCopies {
  T* plain = nullptr;
  StreamCopy work, result;           // past the caches
  FetchAhead source, changedResult;  // the mosaic's next row; a result that keeps some bytes
  const PieceReader* reader = nullptr;
  int y = 0;
  size_t read = 0;  // pixels that the reader has had

  // Pixels up to `columns` are complete.
  void piece(size_t columns) {
    if (!reader || columns - read < PieceReader::kPiece) return;
    lastPiece(columns);
  }
  void lastPiece(size_t columns) {
    reader->read(y, read, columns);
    read = columns;
  }
};

// Rows: the half rows that it reads.
template <class T, class Rows>
using PixelRow = void (*)(const Rows& rows, size_t columns, T* pixels, RowCopies<T>& copies);

// By column parity of the green sites, then by whether the row's other sites are red.
template <class T, class Rows>
struct PixelRows {
  PixelRow<T, Rows> of[2][2];
};

}  // namespace vistrel::core
