// Camera raw files, through a plug-in that is loaded when the first one is met.
#pragma once

#include "apps/input/reader.h"

namespace vistrel::app {

// Files of the extensions that cameras give.
extern const ReaderType kCameraRaw;

// Throws Failure: input/output where there is no plug-in, rejected where it can't read the file.
std::unique_ptr<Reader> openCameraRaw(const Source& source);

}  // namespace vistrel::app
