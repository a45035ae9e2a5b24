// How alike samples are that lie so far apart.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vistrel::app {

using Samples = std::vector<uint16_t>;

// How much samples at that distance differ, a mean over some thousand places.
double difference(const Samples& s, size_t distance);

// What samples differ by that have nothing to do with each other, kFlat at least.
constexpr double kFlat = 1e-9;
double unlike(const Samples& s);

// Whether bytes at different places of a group behave alike, 0..1: so do plain bytes, but not the
// high and low bytes of words, and not the bytes of groups. 0 where two bits or more are set in
// some places and never in others.
double evenness(const std::vector<uint8_t>& bytes, uint32_t period);

}  // namespace vistrel::app
