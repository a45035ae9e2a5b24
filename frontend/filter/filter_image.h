// The image that a filter changes, and the copy of it that the filter reads.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace vistrel::core {

// Where a filter's tap lies, from the sample that the filter computes.
struct FilterOffset {
  ptrdiff_t row, column;
};

// How many samples on each side of an image stay unchanged.
struct Border {
  ptrdiff_t top, bottom, left, right;
};

// Rows of samples, and the memory for their copy.
template <class T>
struct FilterImage {
  T* samples;
  T* copy;
  ptrdiff_t width, height;
  size_t copied;  // number of samples; their bytes are counted in 32 bits

  FilterImage(void* memory, uint32_t rowSamples, uint32_t rows, T* pImage)
      : samples(pImage), copy(static_cast<T*>(memory)), width(rowSamples), height(rows),
        copied(rowSamples * rows * uint32_t{sizeof(T)} / sizeof(T)) {}

  bool hasInside(const Border& border) const {
    return width > border.left + border.right && height > border.top + border.bottom;
  }
};

// Copies rows of an image before the filter changes them.
template <class T>
class CopyAhead {
 public:
  explicit CopyAhead(const FilterImage<T>& image) : image_(image) {}

  void upToRow(ptrdiff_t row) {
    const size_t end = std::min(static_cast<size_t>(row * image_.width), image_.copied);
    std::copy(image_.samples + done_, image_.samples + end, image_.copy + done_);
    done_ = end;
  }

 private:
  const FilterImage<T>& image_;
  size_t done_ = 0;
};

// Changes the samples inside the border, where no tap reaches beyond the image. tapsOf(r) returns
// an array with the taps of row r. filterRow(taps, n, results) computes the n results of a row;
// taps point to the samples for the first result.
template <class T, class TapsOf, class FilterRow>
void filterInside(const FilterImage<T>& image, const Border& border, TapsOf tapsOf,
                  FilterRow filterRow) {
  CopyAhead copy(image);
  const ptrdiff_t n = image.width - border.left - border.right;
  const ptrdiff_t end = image.hasInside(border) ? image.height - border.bottom : 0;
  for (ptrdiff_t r = border.top; r < end; ++r) {
    copy.upToRow(r + border.bottom + 1);
    const ptrdiff_t first = r * image.width + border.left;
    const auto taps = tapsOf(r);
    const T* samples[taps.size()];
    std::transform(taps.begin(), taps.end(), samples, [&](const FilterOffset& tap) {
      return image.copy + first + tap.row * image.width + tap.column;
    });
    filterRow(samples, static_cast<size_t>(n), image.samples + first);
  }
  copy.upToRow(image.height);
}

}  // namespace vistrel::core
