// FITS files that gzip has compressed.
#pragma once

#include <cstdint>
#include <vector>

#include "apps/files/source.h"

namespace vistrel::app {

constexpr size_t kFitsBlock = 2880;  // headers and samples take whole blocks of bytes
constexpr size_t kFitsCard = 80;     // a line of a header

struct InflatedFits {
  std::vector<uint8_t> bytes;  // up to the end of the first image
  uint64_t
      trailing;  // bytes after the last header unit and its data, and after the compressed file
};

// All of the file is decoded, so that damage anywhere shows, but never more than its headers
// announce. Throws ProgramError.
InflatedFits inflatedFits(const Source& source);

}  // namespace vistrel::app
