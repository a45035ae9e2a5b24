#include "tests/check/fill.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "tests/check/pattern.h"
#include "tests/check/random.h"

namespace vistrel::core::check {
namespace {

// Larger frames repeat their samples after this many rows and samples. The numbers are odd, so that
// the repetition does not line up with anything.
constexpr size_t kOwnRows = 509, kOwnSamples = 99991;

// The row may begin at any address.
template <class T>
void fillRow(const Frame& frame, uint32_t x0, uint32_t y, uint8_t* row, size_t samples) {
  const size_t own = std::min(samples, kOwnSamples);
  for (size_t x = 0; x < own; ++x) {
    const auto sample = static_cast<T>(frame.at(x0 + static_cast<uint32_t>(x), y));
    std::memcpy(row + x * sizeof(T), &sample, sizeof(T));
  }
  for (size_t x = own; x < samples; ++x)
    std::memcpy(row + x * sizeof(T), row + (x - own) * sizeof(T), sizeof(T));
}

template <class T>
void fillWith(const Block& block, const Call& call, uint32_t bits) {
  const uint32_t largest = std::numeric_limits<T>::max();
  const uint32_t maximum = bits == 0 || bits > 16 ? largest : std::min(largest, (1u << bits) - 1);
  const Frame frame{static_cast<Pattern>(call.pattern), call.seed, maximum, largest};
  const Shape& shape = block.shape;
  for (size_t y = 0; y < shape.rows; ++y) {
    if (y < kOwnRows)
      fillRow<T>(frame, static_cast<uint32_t>(shape.origin / sizeof(T)), static_cast<uint32_t>(y),
                 block.row(y), shape.rowBytes / sizeof(T));
    else
      std::memcpy(block.row(y), block.row(y - kOwnRows), shape.rowBytes);
  }
}

}  // namespace

void fillWithNoise(const Block& block, uint64_t seed) {
  uint64_t at = seed;
  for (size_t r = 0; r < block.shape.rows; ++r) {
    for (size_t x = 0; x < block.shape.rowBytes; x += 8) {
      const uint64_t noise = mix(at++);
      std::memcpy(block.row(r) + x, &noise, std::min<size_t>(8, block.shape.rowBytes - x));
    }
  }
}

void fillWithFrame(const Block& block, const Call& call, size_t sampleBytes, uint32_t bits) {
  if (sampleBytes == 1)
    fillWith<uint8_t>(block, call, bits);
  else
    fillWith<uint16_t>(block, call, bits);
}

void copyRows(const Block& from, const Block& to) {
  for (size_t r = 0; r < from.shape.rows; ++r)
    std::memcpy(to.row(r), from.row(r), from.shape.rowBytes);
}

}  // namespace vistrel::core::check
