// TIFF of a mosaic or of gray, and DNG whose samples are not compressed by JPEG.
#pragma once

#include "apps/input/reader.h"

namespace vistrel::app {

extern const ReaderType kTiff;

}  // namespace vistrel::app
