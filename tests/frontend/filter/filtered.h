// Filters on images of the tests.
#pragma once

#include <algorithm>

#include "frontend/filter/filter.h"
#include "tests/frontend/calls.h"

namespace vistrel::core::test {

using Bytes = std::vector<uint8_t>;
using Samples16 = std::vector<uint16_t>;

inline constexpr _FLT_3X3 kMean = {9, {1, 1, 1, 1, 1, 1, 1, 1, 1}};

struct Size {
  uint32_t width, height;
};

template <class T>
std::vector<T> filtered(const _FLT_3X3* filter, uint32_t format, Size size,
                        const std::vector<T>& image) {
  Canvas<T> canvas(image.size());
  std::copy(image.begin(), image.end(), canvas.data());
  EXPECT_EQ(ImgFilter(kStream, filter, format, size.width, size.height, canvas.data()), 1u);
  return canvas.samples();
}

}  // namespace vistrel::core::test
