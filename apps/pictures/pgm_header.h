// The header of a binary PGM or PPM: P5 or P6, width, height, maxval, comments between them.
#pragma once

#include <cstdint>

#include "apps/files/source.h"

namespace vistrel::app {

struct PgmHeader {
  uint32_t width, height;
  uint32_t maxval;     // 1..65535; above 255 a sample has two bytes, the high one first
  uint64_t samplesAt;  // where the first sample begins
};

bool beginsPgm(const Source& source, uint64_t at);

// Reads the header that begins there. Throws Failure (rejected).
PgmHeader readPgmHeader(const Source& source, uint64_t at, char type = '5');

}  // namespace vistrel::app
