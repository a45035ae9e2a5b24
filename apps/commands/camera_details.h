// What readers know about a camera, as writers take it.
#pragma once

#include "apps/input/frame_file.h"
#include "apps/pictures/picture_details.h"

namespace vistrel::app {

Shot shotOf(const CameraMetadata& camera);

// Of the frame in a file, whose significant bits are the lowest. Of two matrices, the one for the
// light that is nearer to daylight.
DngCamera dngCameraOf(const FrameFile& file);

}  // namespace vistrel::app
