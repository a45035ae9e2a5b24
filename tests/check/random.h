// Reproducible random numbers: the same on every machine and with every library.
#pragma once

#include <cstdint>
#include <initializer_list>

namespace vistrel::core::check {

constexpr uint64_t mix(uint64_t v) {
  v += 0x9E3779B97F4A7C15;
  v = (v ^ (v >> 30)) * 0xBF58476D1CE4E5B9;
  v = (v ^ (v >> 27)) * 0x94D049BB133111EB;
  return v ^ (v >> 31);
}

class Random {
 public:
  explicit Random(uint64_t seed) : state_(mix(seed)) {}

  uint64_t next() { return mix(state_++); }
  uint32_t word() { return static_cast<uint32_t>(next() >> 32); }

  // 0 .. end - 1
  uint32_t below(uint32_t end) { return static_cast<uint32_t>((uint64_t{word()} * end) >> 32); }
  bool oneIn(uint32_t n) { return below(n) == 0; }
  uint32_t pick(std::initializer_list<uint32_t> values) {
    return values.begin()[below(static_cast<uint32_t>(values.size()))];
  }

 private:
  uint64_t state_;
};

}  // namespace vistrel::core::check
