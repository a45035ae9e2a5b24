// FITS images of bytes or 16-bit words; the third axis counts frames.
#pragma once

#include "apps/input/reader.h"

namespace vistrel::app {

extern const ReaderType kFits;

}  // namespace vistrel::app
