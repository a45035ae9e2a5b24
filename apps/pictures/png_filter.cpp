#include "apps/pictures/png_filter.h"

#include <cstdlib>
#include <cstring>

namespace vistrel::app {
namespace {

// Predicts each byte from those of the pixels at the left, above and in the corner between them.
template <class Predict>
void subtract(const uint8_t* here, const uint8_t* above, size_t step, size_t bytes, uint8_t* to,
              Predict predict) {
  const uint8_t *const left = here - step, *const corner = above - step;
  for (size_t i = 0; i < bytes; ++i)  // compilers vectorise this form
    to[i] = static_cast<uint8_t>(here[i] - predict(left[i], above[i], corner[i]));
}

int paeth(int left, int above, int corner) {
  const int across = above - corner, down = left - corner;
  const int toLeft = std::abs(across), toAbove = std::abs(down), toCorner = std::abs(across + down);
  const int vertical = toAbove <= toCorner ? above : corner;
  const bool isLeft = toLeft <= toAbove && toLeft <= toCorner;
  return isLeft ? left : vertical;
}

}  // namespace

const std::vector<uint8_t>& FilteredRows::next(const uint8_t* row) {
  const size_t bytes = filtered_.size() - 1;
  std::memcpy(row_.data() + step_, row, bytes);
  filtered_[0] = static_cast<uint8_t>(filter_);
  const auto with = [&](auto predict) {
    subtract(row_.data() + step_, above_.data() + step_, step_, bytes, filtered_.data() + 1,
             predict);
  };
  switch (filter_) {
    case PngFilter::kNone: with([](int, int, int) { return 0; }); break;
    case PngFilter::kLeft: with([](int left, int, int) { return left; }); break;
    case PngFilter::kAbove: with([](int, int above, int) { return above; }); break;
    case PngFilter::kMean: with([](int left, int above, int) { return (left + above) / 2; }); break;
    case PngFilter::kPaeth: with(paeth); break;
  }
  row_.swap(above_);
  return filtered_;
}

}  // namespace vistrel::app
