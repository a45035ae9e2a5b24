// Raw frames from samples: headerless raw files, and images for other files.
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

// Rows of `width` samples of `bits` significant bits as a mono image.
Image monoImage(const std::vector<uint16_t>& samples, uint32_t width, uint32_t bits);

}  // namespace vistrel::app
