#include "apps/output/picture.h"

#include <string>

#include "apps/failure.h"

namespace vistrel::app {

const PictureType& pictureType(const std::filesystem::path& path) {
  static const PictureType types[] = {{".png", 0, false, writePng},   {".tif", 0, false, writeTiff},
                                      {".tiff", 0, false, writeTiff}, {".pam", 0, true, writePam},
                                      {".ppm", 3, true, writePnm},    {".pgm", 1, true, writePnm},
                                      {".raw", 0, true, writeRaw},    {".bin", 0, true, writeRaw}};
  static const PictureType standardOutput{"", 0, true, writePnm};
  if (path == "-") return standardOutput;
  std::string extension = path.extension().string();
  if (isStandardOutput(path))
    extension = fmt::format(".{}", path.string().substr(0, path.string().size() - 2));
  for (const PictureType& type : types)
    if (extension == type.extension) return type;
  fail(kUsage,
       "-o {}: the name of a picture ends in .png, .tif, .pam, .ppm (colour), .pgm (gray) or .raw; "
       "standard output is - for PNM, png:- and so on",
       path.string());
}

}  // namespace vistrel::app
