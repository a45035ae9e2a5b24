// The header of a binary PGM: P5, width, height, maxval, comments between them.
#pragma once

#include <cstdint>
#include <istream>

namespace vistrel::app {

struct PgmHeader {
  uint32_t width, height;
  uint32_t maxval;  // 1..65535; above 255 a sample has two bytes, the high one first
};

// Reads up to the first sample. Throws Failure (rejected).
PgmHeader readPgmHeader(std::istream& in);

}  // namespace vistrel::app
