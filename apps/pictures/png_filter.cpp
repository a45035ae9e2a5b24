#include "apps/pictures/png_filter.h"

#include <cstdlib>
#include <cstring>

namespace vistrel::app {

const std::vector<uint8_t>& PaethFilter::next(const uint8_t* row) {
  constexpr uint8_t kPaeth = 4;
  const size_t bytes = filtered_.size() - 1;
  std::memcpy(row_.data() + step_, row, bytes);
  filtered_[0] = kPaeth;
  uint8_t* const to = filtered_.data() + 1;
  const uint8_t *const left = row_.data(), *const here = left + step_;
  const uint8_t *const corner = above_.data(), *const above = corner + step_;
  for (size_t i = 0; i < bytes; ++i) {  // compilers vectorise this form
    const int across = above[i] - corner[i], down = left[i] - corner[i];
    const int toLeft = std::abs(across), toAbove = std::abs(down),
              toCorner = std::abs(across + down);
    const uint8_t vertical = toAbove <= toCorner ? above[i] : corner[i];
    const bool isLeft = toLeft <= toAbove && toLeft <= toCorner;
    to[i] = static_cast<uint8_t>(here[i] - (isLeft ? left[i] : vertical));
  }
  row_.swap(above_);
  return filtered_;
}

}  // namespace vistrel::app
