// Writing raw frames: headerless raw files and PGM.
#pragma once

#include <cstdint>
#include <vector>

#include "apps/names/pixel_format.h"
#include "apps/pictures/picture.h"

namespace vistrel::app {

// Packs `count` samples of a row. No sample may have bits above those of the format.
std::vector<uint8_t> packRow(const PixelFormat& format, const uint16_t* samples, size_t count);

// Writes rows of `width` samples; each row begins at a byte boundary. Throws ProgramError
// (input/output).
void writeHeaderless(const PixelFormat& format, const std::vector<uint16_t>& samples,
                     uint32_t width, AtomicFile& file);

// As above, but as a PGM of `bits` significant bits.
void writePgm(const std::vector<uint16_t>& samples, uint32_t width, uint32_t bits,
              AtomicFile& file);

}  // namespace vistrel::app
