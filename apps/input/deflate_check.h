// The checksum at the end of deflated data.
#pragma once

#include <cstdint>
#include <span>

#include "apps/files/source.h"

namespace vistrel::app {

// Returns true if `count` bytes at this offset are a whole zlib stream with the right checksum,
// perhaps with bytes behind it. libtiff stops decoding before the checksum.
bool isIntactDeflate(const Source& source, uint64_t at, uint64_t count);

// The same for a whole gzip file in memory.
bool isIntactGzip(std::span<const uint8_t> bytes);

}  // namespace vistrel::app
