#include "host/frame_rows.h"

#include <algorithm>
#include <cstring>

#include "host/packings.h"
#include "samples/mirror.h"

namespace vistrel::host {
namespace {

uint32_t belowOf(const vistrel_frame& f) {
  return f.alignment == VISTREL_HIGH_BITS ? 8 * f.bytes_per_sample - f.bits : 0;
}

// Whether samples can be read where they lie.
template <class T>
bool isAligned(const vistrel_frame& f) {
  return reinterpret_cast<uintptr_t>(f.samples) % alignof(T) == 0 && strideOf(f) % sizeof(T) == 0;
}

}  // namespace

template <class T>
FrameRows<T>::FrameRows(const Plan& plan, const vistrel_frame& frame,
                        const vistrel_conversion& conversion, const Gains& gains,
                        core::Arena& arena)
    : plan_(plan), frame_(frame), conversion_(conversion), gains_(gains),
      packing_(packingOf(frame)), stride_(static_cast<size_t>(strideOf(frame))) {
  const bool masks = conversion.excess == VISTREL_MASK && frame.bits < 8 * sizeof(T);
  isReady_ = !(masks && !isTight(frame.packing)) && !belowOf(frame) && !conversion.black &&
             !conversion.white_balance && plan.bits == frame.bits;
  const int64_t first = std::max<int64_t>(plan.x, 0);
  const int64_t end = std::min<int64_t>(plan.x + plan.width, frame.width);
  const size_t channels = channelsOf(frame);
  first_ = static_cast<size_t>(first) * channels;
  left_ = static_cast<size_t>(first - plan.x) * channels;
  count_ = static_cast<size_t>(end - first) * channels;
  right_ = plan.width * channels - left_ - count_;
  if (packing_ || !isReady_ || left_ || right_ || !isAligned<T>(frame))
    line_ = arena.take<T>(plan.width * channels);
}

template <class T>
const unsigned char* FrameRows<T>::rowOf(int y) const {
  const size_t row = core::mirrored(plan_.y + y, frame_.height);
  return static_cast<const unsigned char*>(frame_.samples) + row * stride_;
}

// What the engine will fetch of the row while it makes another. Packed samples take more than a
// byte; what is fetched of them is the greater part.
template <class T>
core::Prefetcher FrameRows<T>::fetchOf(int y) const {
  if (y >= static_cast<int>(plan_.height)) return {};
  const size_t skipped = packing_ ? core::packedBytes(*packing_, first_) : first_ * sizeof(T);
  return {rowOf(y) + skipped, packing_ ? 1 : sizeof(T)};
}

template <class T>
core::Preparation FrameRows<T>::preparationOf(int y) const {
  const auto gainAt = [&](size_t x) -> uint32_t {
    const uint32_t colour =
        vistrel_colour_at(plan_.phase, static_cast<uint32_t>(x), static_cast<uint32_t>(y));
    return colour == VISTREL_NO_COLOUR ? uint32_t{VISTREL_GAIN_ONE} : gains_[colour];
  };
  return {frame_.bits,
          belowOf(frame_),
          frame_.bits - plan_.bits,
          {conversion_.black, conversion_.black},
          {gainAt(left_), gainAt(left_ + 1)}};
}

// The samples that the frame has.
template <class T>
void FrameRows<T>::load(int y, T* samples) const {
  const unsigned char* const row = rowOf(y);
  const void* from = row + first_ * sizeof(T);
  if (packing_) {
    const size_t all = size_t{frame_.width} * channelsOf(frame_);
    core::unpackPart(*packing_, row, all, first_, first_ + count_, samples);
    from = samples;
  }
  if (!isReady_)
    core::prepareRow(from, count_, samples, preparationOf(y));
  else if (!packing_)
    std::memcpy(samples, from, count_ * sizeof(T));
}

template <class T>
const T* FrameRows<T>::row(int y) {
  this->next_ = fetchOf(y + 1);
  if (!line_) return reinterpret_cast<const T*>(rowOf(y) + first_ * sizeof(T));
  T* const samples = line_ + left_;
  load(y, samples);
  core::mirrorEnds(samples, count_, left_, right_);
  return line_;
}

template class FrameRows<uint8_t>;
template class FrameRows<uint16_t>;

}  // namespace vistrel::host
