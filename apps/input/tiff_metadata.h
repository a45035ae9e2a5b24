// The tags in which a TIFF or DNG describes its camera.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "apps/files/source.h"
#include "apps/input/camera_metadata.h"

namespace vistrel::app {

// Reads the tags for the frame in the directory at `offset`. Tags that are malformed are left out,
// with a warning.
CameraMetadata readTiffMetadata(const Source& source, uint64_t offset,
                                std::vector<std::string>& warnings);

}  // namespace vistrel::app
