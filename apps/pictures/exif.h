// EXIF: what JPEG and PNG say about the camera and the program.
#pragma once

#include <string>

#include "apps/pictures/picture_details.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {

extern const char* const kSoftware;

bool isAscii(const std::string& text);

// 2026-11-22T18:06:29 as 2026:11:22 18:06:29.
std::string exifDate(const std::string& date);

// The block, as a little-endian TIFF without pixels.
std::string exifOf(const vistrel_layout& layout, const PictureDetails& details);

}  // namespace vistrel::app
