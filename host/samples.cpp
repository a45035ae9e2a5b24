#include "host/samples.h"

#include <cstring>
#include <limits>

#include "host/status.h"

namespace vistrel::host {
namespace {

// The library numbers the samples from the region's first to its last with 32 bits.
template <class T>
bool usable(const unsigned char* source, const Plan& p) {
  if (p.readsBeside && p.sourceStride != uint64_t{p.width} * sizeof(T)) return false;
  return reinterpret_cast<uintptr_t>(source) % alignof(T) == 0 && p.sourceStride % sizeof(T) == 0 &&
         p.sourceStride / sizeof(T) <= std::numeric_limits<uint32_t>::max() / p.height;
}

}  // namespace

template <class T>
Samples<T>::Samples(const Plan& p, const vistrel_frame& frame, uint32_t excess) {
  const auto* source = static_cast<const unsigned char*>(frame.samples) +
                       p.y * static_cast<size_t>(p.sourceStride) + size_t{p.x} * sizeof(T);
  if (usable<T>(source, p)) {
    first_ = reinterpret_cast<const T*>(source);
    stride_ = static_cast<uint32_t>(p.sourceStride / sizeof(T));
  } else {
    copyRows(source, p);
  }
  const uint32_t unused = 8 * sizeof(T) - frame.bits;
  const uint32_t below = frame.alignment == VISTREL_HIGH_BITS ? unused : 0;
  const T allowed = static_cast<T>(((1u << frame.bits) - 1) << below);
  const bool exceed = unused && (allBits(p) & ~allowed) != 0;
  if (exceed && excess == VISTREL_REFUSE) refuseExcess(p, frame, allowed);
  const uint32_t shift = below + frame.bits - p.bits;
  if (!exceed && !shift) return;
  if (!copy_) copyRows(source, p);
  for (size_t i = 0; i < size_t{p.width} * p.height; ++i)
    copy_[i] = static_cast<T>((copy_[i] & allowed) >> shift);
}

template <class T>
void Samples<T>::copyRows(const unsigned char* source, const Plan& p) {
  copy_ = std::make_unique_for_overwrite<T[]>(size_t{p.width} * p.height);
  first_ = copy_.get();
  stride_ = p.width;
  for (uint32_t row = 0; row < p.height; ++row)
    std::memcpy(&copy_[size_t{row} * p.width], source + row * static_cast<size_t>(p.sourceStride),
                size_t{p.width} * sizeof(T));
}

template <class T>
T Samples<T>::allBits(const Plan& p) const {
  T bits = 0;
  for (uint32_t row = 0; row < p.height; ++row) {
    const T* samples = first_ + size_t{row} * stride_;
    for (uint32_t i = 0; i < p.width; ++i) bits |= samples[i];
  }
  return bits;
}

template <class T>
void Samples<T>::refuseExcess(const Plan& p, const vistrel_frame& frame, T allowed) const {
  size_t i = 0;
  const auto sample = [&] { return first_[i / p.width * stride_ + i % p.width]; };
  while ((sample() & ~allowed) == 0) ++i;
  const auto place =
      fmt::format("sample {} at column {}, row {}", sample(), p.x + i % p.width, p.y + i / p.width);
  if (frame.alignment == VISTREL_HIGH_BITS)
    refuse(VISTREL_EXCESS_SAMPLE, "{}: a frame of {} high bits has samples whose {} lowest are 0",
           place, frame.bits, 8 * sizeof(T) - frame.bits);
  refuse(VISTREL_EXCESS_SAMPLE, "{}: a frame of {} bits has samples of at most {}", place,
         frame.bits, allowed);
}

template class Samples<uint8_t>;
template class Samples<uint16_t>;

}  // namespace vistrel::host
