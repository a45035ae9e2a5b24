// Frames whose samples a test makes.
#pragma once

#include <cstdint>
#include <vector>

#include "vistrel/vistrel_host.h"

namespace vistrel {

class Frame {
 public:
  // sample(x, y) returns the sample.
  template <class Sample>
  Frame(uint32_t width, uint32_t height, uint32_t bits, uint32_t phase, Sample sample) {
    for (uint32_t y = 0; y < height; ++y)
      for (uint32_t x = 0; x < width; ++x) samples_.push_back(static_cast<uint16_t>(sample(x, y)));
    frame_.width = width;
    frame_.height = height;
    frame_.bits = bits;
    frame_.phase = phase;
    frame_.bytes_per_sample = 2;
  }

  operator vistrel_frame() const {
    vistrel_frame frame = frame_;
    frame.samples = samples_.data();
    frame.size = samples_.size() * 2;
    return frame;
  }

 private:
  std::vector<uint16_t> samples_;
  vistrel_frame frame_{};
};

// Numbers that look random, the same in every run.
class Noise {
 public:
  // From 0 to n - 1.
  uint32_t below(uint32_t n) {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<uint32_t>((state_ >> 33) % n);
  }

  // With a mean of 0 and a deviation of 1: the sum of twelve uniform numbers is nearly normal.
  double normal() {
    double sum = -6;
    for (int i = 0; i < 12; ++i) sum += below(1 << 20) / 1048576.0;
    return sum;
  }

 private:
  uint64_t state_ = 1;
};

}  // namespace vistrel
