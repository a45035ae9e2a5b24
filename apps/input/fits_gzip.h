// FITS files that gzip has compressed.
#pragma once

#include <cstdint>
#include <vector>

#include "apps/files/source.h"

namespace vistrel::app {

constexpr size_t kFitsBlock = 2880;  // headers and samples take whole blocks of bytes
constexpr size_t kFitsCard = 80;     // a line of a header

// The file up to the end of its first image. All of it is decoded, so that damage anywhere shows,
// but never more than its headers announce. Throws ProgramError.
std::vector<uint8_t> inflatedFits(const Source& source);

}  // namespace vistrel::app
