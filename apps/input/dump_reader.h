// Header-less dumps, which the command line describes.
#pragma once

#include "apps/input/input_options.h"
#include "apps/input/reader.h"

namespace vistrel::app {

// `options.size` and `options.bits` are there. Throws Failure.
std::unique_ptr<Reader> openDump(const Source& source, const InputOptions& options);

}  // namespace vistrel::app
