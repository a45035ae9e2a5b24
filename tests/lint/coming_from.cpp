// Runs the C++ of docs/coming-from.md on a frame with padded rows. A stand-in for OpenCV's matrix
// has the members that the page uses.
#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

#include "vistrel/vistrel.hpp"

enum { CV_16UC1, CV_8UC3 };

namespace cv {

struct Mat {
  Mat(int height, int width, int type)
      : rows(height), cols(width), step(static_cast<size_t>(width) * (type == CV_8UC3 ? 3 : 2) + 4),
        bytes(step * static_cast<size_t>(height)), data(bytes.data()) {}
  Mat(Mat&&) = default;

  template <class T>
  T* ptr() {
    return reinterpret_cast<T*>(data);
  }

  int rows, cols;
  size_t step;  // bytes from row to row
  std::vector<uint8_t> bytes;
  uint8_t* data;
};

}  // namespace cv

namespace {

cv::Mat colours(cv::Mat raw) {
#include <coming_from.inl>  // extracted from the page by CMake
  return bgr;
}

}  // namespace

// A gray wall at half of twelve bits.
int main() {
  cv::Mat raw(6, 8, CV_16UC1);
  std::fill_n(raw.ptr<uint16_t>(), raw.step * 6 / 2, uint16_t{2048});
  const cv::Mat bgr = colours(std::move(raw));
  for (size_t y = 0; y < 6; ++y)
    for (size_t x = 0; x < 24; ++x)
      if (const int sample = bgr.data[y * bgr.step + x]; sample != 128)
        return std::printf("row %zu, byte %zu: %d\n", y, x, sample), 1;
}
