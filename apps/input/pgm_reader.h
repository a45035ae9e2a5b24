// Binary PGM, also several images in one stream.
#pragma once

#include "apps/input/reader.h"

namespace vistrel::app {

extern const ReaderType kPgm;

}  // namespace vistrel::app
