// The rows of one plane of an image.
#pragma once

#include <cstddef>

#include "common/rows/arena.h"
#include "common/rows/nontemporal.h"

namespace vistrel::core {

struct PlaneMemory {
  unsigned char* first;  // byte of row 0
  ptrdiff_t stride;      // bytes from row to row
  bool bypassesCaches;   // nobody reads the plane soon
};

// Fills one row at a time, from left to right.
class PlaneRows {
 public:
  PlaneRows(const PlaneMemory& plane, size_t rowBytes, Arena& arena) : plane_(plane) {
    if (plane.bypassesCaches) line_ = arena.take<unsigned char>(rowBytes);
  }

  unsigned char* row(size_t y) const {
    return plane_.first + static_cast<ptrdiff_t>(y) * plane_.stride;
  }
  // For rows that are not made in place.
  bool hasLine() const { return plane_.bypassesCaches; }

  void begin(size_t y) {
    next_ = hasLine() ? line_ : row(y);
    if (hasLine()) copy_ = NonTemporalCopy(row(y), line_);
  }
  // The row's first byte that has not been filled.
  unsigned char* next() const { return next_; }
  void filled(size_t bytes) {
    next_ += bytes;
    copy_.upTo(next_);
  }
  void end() { copy_.finish(next_); }

 private:
  PlaneMemory plane_;
  unsigned char* line_ = nullptr;  // a row, before it goes past the caches
  unsigned char* next_ = nullptr;
  NonTemporalCopy copy_;
};

}  // namespace vistrel::core
