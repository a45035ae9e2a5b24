// Raw frames: dumps without a header, and PGM.
#pragma once

#include <cstdint>
#include <vector>

#include "apps/names/pixel_format.h"
#include "apps/pictures/picture.h"

namespace vistrel::app {

// `count` samples of a row as that format has them. Samples have no bits above the format's.
std::vector<uint8_t> packRow(const PixelFormat& format, const uint16_t* samples, size_t count);

// Rows of `width` samples, each beginning at a byte. Throws Failure (input/output).
void writeDump(const PixelFormat& format, const std::vector<uint16_t>& samples, uint32_t width,
               AtomicFile& file);

// The same as PGM, of so many significant bits.
void writePgm(const std::vector<uint16_t>& samples, uint32_t width, uint32_t bits,
              AtomicFile& file);

}  // namespace vistrel::app
