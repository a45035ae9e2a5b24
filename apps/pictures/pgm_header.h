// The headers of PGM, PPM and gray PAM: width, height, maxval, with comments between them.
#pragma once

#include <cstdint>
#include <optional>

#include "apps/files/source.h"

namespace vistrel::app {

struct PgmHeader {
  char type;  // '2': plain PGM, samples as text; '5': binary PGM; '6': PPM; '7': PAM
  uint32_t width, height;
  uint32_t maxval;                     // 1..65535; above 255 samples have 16 bits, big-endian
  uint64_t samplesAt;                  // offset of the first sample
  std::optional<uint32_t> phase = {};  // as a comment tells, such as "# phase rggb"
};

// Whether a file of this type begins at the offset.
bool beginsPnm(const Source& source, uint64_t at, char type);

// Reads the header of a PGM or a gray PAM at offset `at`. Throws ProgramError (rejected).
PgmHeader readGrayHeader(const Source& source, uint64_t at);

// Reads the header of a PPM at the beginning. Throws ProgramError (rejected).
PgmHeader readPpmHeader(const Source& source);

}  // namespace vistrel::app
