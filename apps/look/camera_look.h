// What a file says about its camera, as parts of a look.
#pragma once

#include "apps/input/camera_metadata.h"
#include "apps/look/look.h"

namespace vistrel::app {

// A look that users choose in part, with what the file says about its camera: users go first.
LookChoice withCamera(LookChoice choice, const CameraMetadata& camera, bool isMono);

}  // namespace vistrel::app
