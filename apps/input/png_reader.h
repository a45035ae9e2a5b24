// Gray PNG of 8 or 16 bits; the chunk sBIT tells how many are significant.
#pragma once

#include "apps/input/reader.h"

namespace vistrel::app {

extern const ReaderType kPng;

}  // namespace vistrel::app
