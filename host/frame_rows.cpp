#include "host/frame_rows.h"

#include <algorithm>
#include <cstring>
#include <iterator>

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
    : plan_(plan), frame_(frame), conversion_(conversion), gains_(gains) {
  const bool masks = conversion.excess == VISTREL_MASK && frame.bits < 8 * sizeof(T);
  const bool subtracts = std::any_of(std::begin(conversion.black), std::end(conversion.black),
                                     [](uint32_t black) { return black != 0; });
  isReady_ = !masks && !belowOf(frame) && !subtracts && !conversion.white_balance &&
             plan.bits == frame.bits;
  const int64_t first = std::max<int64_t>(plan.x, 0);
  const int64_t end = std::min<int64_t>(plan.x + plan.width, frame.width);
  left_ = static_cast<size_t>(first - plan.x);
  count_ = static_cast<size_t>(end - first);
  right_ = plan.width - left_ - count_;
  if (!isReady_ || left_ || right_ || !isAligned<T>(frame)) line_ = arena.take<T>(plan.width);
}

// The first of the row's samples that the frame has.
template <class T>
const unsigned char* FrameRows<T>::bytesOf(int y) const {
  const size_t row = core::mirrored(plan_.y + y, frame_.height);
  const auto column = static_cast<size_t>(plan_.x + static_cast<int64_t>(left_));
  return static_cast<const unsigned char*>(frame_.samples) +
         row * static_cast<size_t>(strideOf(frame_)) + column * sizeof(T);
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
          blackOf(conversion_, plan_.x + static_cast<int64_t>(left_), plan_.y + y),
          {gainAt(left_), gainAt(left_ + 1)}};
}

template <class T>
const T* FrameRows<T>::row(int y) {
  const unsigned char* const bytes = bytesOf(y);
  const bool hasNext = y + 1 < static_cast<int>(plan_.height);
  this->next_ = hasNext ? core::Prefetcher(bytesOf(y + 1), sizeof(T)) : core::Prefetcher();
  if (!line_) return reinterpret_cast<const T*>(bytes);
  T* const samples = line_ + left_;
  if (isReady_)
    std::memcpy(samples, bytes, count_ * sizeof(T));
  else
    core::prepareRow(bytes, count_, samples, preparationOf(y));
  core::mirrorEnds(samples, count_, left_, right_);
  return line_;
}

template class FrameRows<uint8_t>;
template class FrameRows<uint16_t>;

}  // namespace vistrel::host
