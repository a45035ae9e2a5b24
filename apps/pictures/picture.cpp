#include "apps/pictures/picture.h"

#include <bit>
#include <string>
#include <vector>

#include "apps/error.h"
#include "apps/files/source.h"
#include "apps/names/output_type.h"

namespace vistrel::app {

const PictureType& pictureType(const std::filesystem::path& path) {
  static const PictureType types[] = {
      {".png", 0, false, writePng}, {".tif", 0, false, writeTiff}, {".tiff", 0, false, writeTiff},
      {".pam", 0, true, writePam},  {".ppm", 3, true, writePnm},   {".pgm", 1, true, writePnm},
      {".pnm", 0, true, writePnm},  {".raw", 0, true, writeRaw},   {".bin", 0, true, writeRaw}};
  static const PictureType standardOutput{"", 0, true, writePnm};
  if (path == "-") return standardOutput;
  const std::string extension = fmt::format(".{}", outputTypeName(path));
  for (const PictureType& type : types)
    if (extension == type.extension) return type;
  throwError(
      kUsage,
      "-o {}: the name of a picture ends in .png, .tif, .pam, .ppm (colour), .pgm (gray) or .raw; "
      "standard output is - for PNM, png:- and so on",
      path.string());
}

const PictureType& outputType(const std::filesystem::path& path) {
  static const PictureType y4m{".y4m", 0, true, writeY4m, beginY4m};
  return outputTypeName(path) == "y4m" ? y4m : pictureType(path);
}

void writeRaw(const Image& image, AtomicFile& file) {
  if (image.layout.bits <= 8 || std::endian::native == std::endian::little)
    return file.write(image.pixels.data(), image.pixels.size());
  Bytes bytes = image.pixels;
  swapBytes(bytes.data(), bytes.size() / 2);
  file.write(bytes.data(), bytes.size());
}

}  // namespace vistrel::app
