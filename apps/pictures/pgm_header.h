// The header of a binary PGM or PPM: P5 or P6, width, height, maxval, with comments between them.
#pragma once

#include <cstdint>
#include <optional>

#include "apps/files/source.h"

namespace vistrel::app {

struct PgmHeader {
  uint32_t width, height;
  uint32_t maxval;                     // 1..65535; above 255 samples have 16 bits, big-endian
  uint64_t samplesAt;                  // offset of the first sample
  std::optional<uint32_t> phase = {};  // as a comment tells, such as "# phase rggb"
};

bool beginsPgm(const Source& source, uint64_t at);

// Reads the header at offset `at`. Throws ProgramError (rejected).
PgmHeader readPgmHeader(const Source& source, uint64_t at, char type = '5');

}  // namespace vistrel::app
