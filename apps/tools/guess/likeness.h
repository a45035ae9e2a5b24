// How similar samples at a given distance are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vistrel::app {

using Samples = std::vector<uint16_t>;

// The mean difference of samples at that distance, measured at some thousand places.
double difference(const Samples& s, size_t distance);

// The mean difference of unrelated samples; at least kFlat.
constexpr double kFlat = 1e-9;
double unlike(const Samples& s);

// How similarly bytes at different positions of a group behave, 0..1. 8-bit samples score high;
// the high and low bytes of 16-bit samples and the bytes of packed groups score low. 0 if two or
// more bits are set at some positions and never at others.
double evenness(const std::vector<uint8_t>& bytes, uint32_t period);

}  // namespace vistrel::app
