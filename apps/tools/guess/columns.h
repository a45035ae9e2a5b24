// What the bytes at each place of a row say about where rows begin and end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vistrel::app {

// Bytes of each row that may be padding; they may go on at its first byte.
struct Padding {
  size_t begin = 0, count = 0;
  bool noise = false;  // else bytes that never change
};

// Of a file whose content recurs after `period` bytes; the most likely first.
std::vector<Padding> paddingsOf(const std::vector<uint8_t>& bytes, size_t period);

// How much each byte of a period differs from that of the pixels before: the left edge of a picture
// is the most different place. Pixels of the same kind are `group` bytes apart.
class Seams {
 public:
  Seams(const std::vector<uint8_t>& bytes, size_t period, size_t group);

  // How many of all places are less likely to be the edge: 0..1.
  double rankOf(size_t place) const;

 private:
  std::vector<double> steps_, sorted_;
};

}  // namespace vistrel::app
