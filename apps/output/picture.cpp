#include "apps/output/picture.h"

#include "apps/failure.h"

namespace vistrel::app {

const PictureType& pictureType(const std::filesystem::path& path) {
  static const PictureType types[] = {
      {".png", 0, writePng}, {".ppm", 3, writePnm}, {".pgm", 1, writePnm}};
  for (const PictureType& type : types)
    if (path.extension() == type.extension) return type;
  fail(kUsage, "-o {}: the name of a picture ends in .png, .ppm (colour) or .pgm (gray)",
       path.string());
}

}  // namespace vistrel::app
