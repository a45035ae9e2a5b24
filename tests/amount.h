// How much a test does that may go on for as long as one likes: VISTREL_AMOUNT in the environment,
// or what is enough in every run.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>

#include "tests/sanitizer.h"

namespace vistrel::test {

inline uint64_t amount(uint64_t usual) {
  if (const char* text = std::getenv("VISTREL_AMOUNT")) return std::stoull(text);
  return VISTREL_SANITIZED ? usual / 10 : usual;
}

// Where random examples begin: VISTREL_SEED in the environment.
inline uint32_t seed() {
  const char* text = std::getenv("VISTREL_SEED");
  return text ? static_cast<uint32_t>(std::stoul(text)) : 0;
}

}  // namespace vistrel::test
