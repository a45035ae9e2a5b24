// The samples of a TIFF image, which lie in strips or in tiles.
#pragma once

#include <cstdint>

#include "apps/files/source.h"
#include "apps/input/tiff_image.h"

namespace vistrel::app {

// Reads the image of the current directory, whose description is `image`: the samples of its area,
// as its table translates them. Throws ProgramError.
void readTiffBlocks(const TiffInput& tiff, const Source& source, const TiffImage& image,
                    uint8_t* to);

}  // namespace vistrel::app
