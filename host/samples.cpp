#include "host/samples.h"

#include <cstring>
#include <limits>

#include "host/preparation.h"

namespace vistrel::host {
namespace {

// The column or row of a frame of n that i stands for: the frame is mirrored about its first and
// last ones, any number of times. So even ones stay even.
uint32_t mirrored(int64_t i, uint32_t n) {
  if (i >= 0 && i < n) return static_cast<uint32_t>(i);
  const int64_t period = 2 * (int64_t{n} - 1);
  i = (i % period + period) % period;
  return static_cast<uint32_t>(i < n ? i : period - i);
}

template <class T>
const unsigned char* at(const vistrel_frame& f, uint32_t x, uint32_t y) {
  return static_cast<const unsigned char*>(f.samples) + y * static_cast<size_t>(strideOf(f)) +
         size_t{x} * sizeof(T);
}

// Whether the library can read the frame in place. It numbers the samples from the first to the
// last with 32 bits.
template <class T>
bool usable(const Plan& p, const vistrel_frame& f) {
  const uint64_t stride = strideOf(f);
  if (p.pad || (p.readsBeside && stride != uint64_t{p.width} * sizeof(T))) return false;
  return reinterpret_cast<uintptr_t>(f.samples) % alignof(T) == 0 && stride % sizeof(T) == 0 &&
         stride / sizeof(T) <= std::numeric_limits<uint32_t>::max() / p.height;
}

// Row y of the plan's rectangle.
template <class T>
void copyRow(const Plan& p, const vistrel_frame& f, int64_t y, T* to) {
  const uint32_t row = mirrored(y, f.height);
  const int64_t first = std::max<int64_t>(p.x, 0);
  const int64_t last = std::min<int64_t>(p.x + p.width, f.width);
  const auto columns = static_cast<size_t>(last - first);
  std::memcpy(to + (first - p.x), at<T>(f, static_cast<uint32_t>(first), row), columns * sizeof(T));
  const auto copyOne = [&](int64_t x) {
    std::memcpy(to + (x - p.x), at<T>(f, mirrored(x, f.width), row), sizeof(T));
  };
  for (int64_t x = p.x; x < first; ++x) copyOne(x);
  for (int64_t x = last; x < p.x + p.width; ++x) copyOne(x);
}

}  // namespace

template <class T>
Samples<T>::Samples(const Plan& p, const vistrel_frame& frame, const vistrel_conversion& c)
    : plan_(p), frame_(frame), significant_(frame) {
  referOrCopy();
  const bool exceed = exceeded();
  if (exceed && c.excess == VISTREL_REJECT) rejectExcess();
  const bool changed = c.black || c.white_balance || significant_.below || p.bits < frame.bits;
  if (!exceed && !changed) return;
  if (!copy_) copy();
  prepare(c);
}

template <class T>
void Samples<T>::referOrCopy() {
  if (!usable<T>(plan_, frame_)) return copy();
  first_ = reinterpret_cast<const T*>(
      at<T>(frame_, static_cast<uint32_t>(plan_.x), static_cast<uint32_t>(plan_.y)));
  stride_ = static_cast<uint32_t>(strideOf(frame_) / sizeof(T));
}

template <class T>
void Samples<T>::copy() {
  copy_ = std::make_unique_for_overwrite<T[]>(size_t{plan_.width} * plan_.height);
  first_ = copy_.get();
  stride_ = plan_.width;
  for (uint32_t row = 0; row < plan_.height; ++row)
    copyRow(plan_, frame_, plan_.y + row, &copy_[size_t{row} * stride_]);
}

template <class T>
bool Samples<T>::exceeded() const {
  for (uint32_t row = 0; row < plan_.height; ++row)
    if (significant_.exceeded(first_ + size_t{row} * stride_, plan_.width)) return true;
  return false;
}

template <class T>
void Samples<T>::rejectExcess() const {
  for (uint32_t row = 0; row < plan_.height; ++row)
    for (uint32_t column = 0; column < plan_.width; ++column) {
      const T sample = first_[size_t{row} * stride_ + column];
      if (significant_.exceeded(sample))
        significant_.rejectSample(sample, mirrored(plan_.x + column, frame_.width),
                                  mirrored(plan_.y + row, frame_.height));
    }
}

template <class T>
void Samples<T>::prepare(const vistrel_conversion& c) {
  const Gains gains = gainsOf(frame_, c);
  const auto gainAt = [&](uint32_t x, uint32_t y) -> uint32_t {
    if (frame_.phase == VISTREL_MONO) return VISTREL_GAIN_ONE;
    return gains[vistrel_colour_at(plan_.phase, x, y)];
  };
  const uint32_t fullScale = (1u << frame_.bits) - 1, dropped = frame_.bits - plan_.bits;
  for (uint32_t y = 0; y < plan_.height; ++y) {
    T* const row = &copy_[size_t{y} * stride_];
    const uint32_t even = gainAt(0, y), odd = gainAt(1, y);
    for (uint32_t x = 0; x < plan_.width; ++x) {
      const uint32_t s = (row[x] & significant_.bits) >> significant_.below;
      const uint32_t gain = x & 1 ? odd : even;
      row[x] = static_cast<T>(amplified(aboveBlack(s, c.black), gain, fullScale) >> dropped);
    }
  }
}

template class Samples<uint8_t>;
template class Samples<uint16_t>;

}  // namespace vistrel::host
