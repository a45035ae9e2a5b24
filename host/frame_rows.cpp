#include "host/frame_rows.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "common/mirror.h"
#include "host/finishing.h"
#include "host/packings.h"

namespace vistrel::host {
namespace {

// Whether samples can be read in place.
template <class T>
bool isAligned(const vistrel_frame& f) {
  return reinterpret_cast<uintptr_t>(f.samples) % alignof(T) == 0 && strideOf(f) % sizeof(T) == 0;
}

// A row of n samples of finished pixels, whose three samples have one black level. There are no
// gains.
template <class T>
void prepareFinished(const void* from, size_t n, T* to, const core::Preparation& how) {
  constexpr size_t kBlock = 96;  // samples; whole pairs of pixels
  const auto mask = static_cast<T>(how.mask());
  T black[kBlock], block[kBlock] = {};
  for (size_t i = 0; i < kBlock; ++i)
    black[i] = static_cast<T>(i / 3 % 2 ? how.black.odd : how.black.even);
  const auto* bytes = static_cast<const unsigned char*>(from);
  for (size_t i = 0; i < n; i += kBlock, bytes += sizeof block) {
    const size_t size = std::min(kBlock, n - i) * sizeof(T);
    std::memcpy(block, bytes, size);
    for (size_t k = 0; k < kBlock; ++k) {
      const auto sample = static_cast<T>((block[k] & mask) >> how.below);
      block[k] = static_cast<T>((std::max(sample, black[k]) - black[k]) >> how.dropped);
    }
    std::memcpy(to + i, block, size);
  }
}

}  // namespace

template <class T>
RowPreparation<T>::RowPreparation(const Plan& plan, const vistrel_frame& frame,
                                  const vistrel_conversion& conversion, const Gains& gains)
    : plan_(plan), frame_(frame), conversion_(conversion), gains_(gains),
      packing_(packingOf(frame)) {
  const bool masks = conversion.excess == VISTREL_MASK && frame.bits < 8 * frame.bytes_per_sample;
  const bool subtracts = std::any_of(std::begin(conversion.black), std::end(conversion.black),
                                     [](uint32_t black) { return black != 0; });
  isReady_ = !(masks && !isTight(frame.packing)) && !belowOf(frame) && !subtracts &&
             !conversion.white_balance && plan.bits == frame.bits && !conversion.finish &&
             !conversion.calibration;
  if (conversion.calibration) calibration_.emplace(frame, conversion);
  const int64_t first = std::max<int64_t>(plan.x, 0);
  const int64_t end = std::min<int64_t>(plan.x + plan.width, frame.width);
  const size_t channels = channelsOf(frame);
  first_ = static_cast<size_t>(first) * channels;
  left_ = static_cast<size_t>(first - plan.x) * channels;
  count_ = static_cast<size_t>(end - first) * channels;
  right_ = plan.width * channels - left_ - count_;
}

template <class T>
core::Preparation RowPreparation<T>::preparationOf(int y) const {
  const auto gainAt = [&](size_t x) -> uint32_t {
    const uint32_t colour =
        vistrel_colour_at(plan_.phase, static_cast<uint32_t>(x), static_cast<uint32_t>(y));
    return colour == VISTREL_NO_COLOUR ? uint32_t{VISTREL_GAIN_ONE} : gains_[colour];
  };
  const bool isCalibrated = calibration_.has_value();
  const auto black = blackOf(conversion_, columnOf(), plan_.y + y);
  return {frame_.bits,
          isCalibrated ? 0 : belowOf(frame_),
          frame_.bits - plan_.bits,
          isCalibrated ? core::ColumnPair<uint32_t>{0, 0} : black,
          {gainAt(left_), gainAt(left_ + 1)}};
}

template <class T>
void RowPreparation<T>::prepare(int y, const void* from, T* samples) const {
  const core::Preparation how = preparationOf(y);
  if (channelsOf(frame_) == 3 && how.black.even != how.black.odd)
    return prepareFinished(from, count_, samples, how);
  core::prepareRow(from, count_, samples, how);
}

// Prepares samples for the finishing stage.
template <class T>
void RowPreparation<T>::finish(int y, const void* from, T* samples) const {
  if constexpr (sizeof(T) == 2)
    core::scaleRow(from, count_, samples,
                   scalingOf(plan_, frame_, conversion_, gains_, columnOf(), plan_.y + y));
}

template <class T>
void RowPreparation<T>::make(int y, const unsigned char* frameRow, T* row) const {
  makeWithoutMargins(y, frameRow, row + left_);
  core::mirrorEnds(row + left_, count_, left_, right_);
}

// Returns the row's samples as T: in the frame, or in memory for them.
template <class T>
const void* RowPreparation<T>::load(const unsigned char* frameRow, T* samples) const {
  if (packing_) {
    const size_t all = size_t{frame_.width} * channelsOf(frame_);
    core::unpackPart(*packing_, frameRow, all, first_, first_ + count_, samples);
    return samples;
  }
  if (!widens()) return begin(frameRow);
  std::copy_n(begin(frameRow), count_, samples);
  return samples;
}

template <class T>
void RowPreparation<T>::makeWithoutMargins(int y, const unsigned char* frameRow, T* samples) const {
  const void* from = load(frameRow, samples);
  if (calibration_) {
    calibration_->apply(from, frameRow, columnOf(), core::mirrored(plan_.y + y, frame_.height),
                        count_, samples);
    from = samples;
  }
  if (conversion_.finish)
    finish(y, from, samples);
  else if (!isReady_)
    prepare(y, from, samples);
  else if (from != samples)
    std::memcpy(samples, from, count_ * sizeof(T));
}

template <class T>
FrameRows<T>::FrameRows(const Plan& plan, const vistrel_frame& frame,
                        const vistrel_conversion& conversion, const Gains& gains,
                        core::Arena& arena)
    : plan_(plan), frame_(frame), stride_(static_cast<size_t>(strideOf(frame))),
      preparation_(plan, frame, conversion, gains),
      staysInFrame_(preparation_.copies() && isAligned<T>(frame)) {
  this->margins_ = preparation_.margins();
  if (!staysInFrame_ || this->margins_.left || this->margins_.right)
    line_ = arena.take<T>(size_t{plan.width} * channelsOf(frame));
}

template <class T>
const unsigned char* FrameRows<T>::rowOf(int y) const {
  const size_t row = core::mirrored(plan_.y + y, frame_.height);
  return static_cast<const unsigned char*>(frame_.samples) + row * stride_;
}

// Returns the frame's row, and lets the next one be fetched.
template <class T>
const unsigned char* FrameRows<T>::request(int y) {
  const bool hasNext = y + 1 < static_cast<int>(plan_.height);
  this->next_ = hasNext ? preparation_.fetch(rowOf(y + 1)) : core::Prefetcher();
  return rowOf(y);
}

template <class T>
const T* FrameRows<T>::row(int y) {
  if (!line_) return withoutMargins(y);
  preparation_.make(y, request(y), line_);
  return line_;
}

template <class T>
const T* FrameRows<T>::withoutMargins(int y) {
  const unsigned char* const frameRow = request(y);
  if (staysInFrame_) return reinterpret_cast<const T*>(preparation_.begin(frameRow));
  preparation_.makeWithoutMargins(y, frameRow, line_);
  return line_;
}

template class RowPreparation<uint8_t>;
template class RowPreparation<uint16_t>;
template class FrameRows<uint8_t>;
template class FrameRows<uint16_t>;

}  // namespace vistrel::host
