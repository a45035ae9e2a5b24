#include "apps/pictures/picture.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <string>
#include <vector>

#include "apps/error.h"
#include "apps/names/output_type.h"
#include "apps/pictures/picture_rows.h"
#include "apps/pictures/tiff_output.h"

namespace vistrel::app {
namespace {

constexpr PictureType kPictureTypes[] = {
    {".png", 0, false, true, writePng},    {".jpg", 0, false, false, writeJpeg},
    {".jpeg", 0, false, false, writeJpeg}, {".tif", 0, false, false, writeTiff},
    {".tiff", 0, false, false, writeTiff}, {".pam", 0, true, false, writePam},
    {".ppm", 3, true, false, writePnm},    {".pgm", 1, true, true, writePnm},
    {".pnm", 0, true, true, writePnm},     {".npy", 0, false, true, writeNpy},
    {".dng", 1, false, true, writeDng},    {".raw", 0, true, true, writeRaw},
    {".bin", 0, true, true, writeRaw}};

constexpr PictureType kStandardOutput{"", 0, true, true, writePnm};

void checkJpeg(const vistrel_layout& l) {
  constexpr uint32_t kMost = 65500;  // of libjpeg
  if (l.bits > 8) throwError(kRejected, "a .jpg has 8 bits; .png and .tif hold {}", l.bits);
  if (l.channels == 4) throwError(kRejected, "a .jpg has no alpha; .png and .tif hold it");
  if (std::max(l.width, l.height) > kMost)
    throwError(kRejected, "{}x{} pixels: a .jpg has at most {}x{}", l.width, l.height, kMost,
               kMost);
}

void checkDng(const vistrel_layout& l, const PictureDetails& details) {
  if (!details.camera)
    throwError(kRejected, "--phase is missing: a .dng names the colours of the 2x2 block");
  if (details.camera->phase == VISTREL_MONO)
    throwError(kRejected, "a .dng needs colour filters; mono goes to .pgm, .png, .npy or .raw");
  if (l.bytes > kMaxClassicBytes)
    throwError(kRejected, "{}x{} samples of {} bits: a .dng holds at most {} bytes of samples",
               l.width, l.height, l.bits, kMaxClassicBytes);
}

}  // namespace

const PictureType& pictureType(const std::filesystem::path& path) {
  if (path == "-") return kStandardOutput;
  const std::string extension = fmt::format(".{}", outputTypeName(path));
  for (const PictureType& type : kPictureTypes)
    if (extension == type.extension) return type;
  throwError(kUsage,
             "-o {}: the name of a picture ends in .png, .jpg, .tif, .pam, .ppm (colour), .pgm "
             "(gray), .npy or .raw, that of a raw frame in .dng; standard output is - for PNM, "
             "png:- and so on",
             path.string());
}

const PictureType& outputType(const std::filesystem::path& path) {
  static const PictureType y4m{".y4m", 0, true, false, writeY4m, beginY4m};
  return outputTypeName(path) == "y4m" ? y4m : pictureType(path);
}

const PictureType& frameType(const std::filesystem::path& path) {
  const PictureType& type = pictureType(path);
  if (type.frames) return type;
  throwError(kUsage, "-o {}: a raw frame is a .dng, .pgm, .png, .npy or .raw", path.string());
}

std::vector<std::string> remarksOn(const PictureType& type, const vistrel_layout& l,
                                   const PictureDetails& details) {
  constexpr uint32_t kLeast = 22;  // of LibRaw and dcraw
  std::vector<std::string> remarks;
  if (!isDng(type) || !details.camera) return remarks;
  if (!details.camera->knowsColours)
    remarks.push_back("the camera's colour matrix is unknown; using that of sRGB");
  if (std::min(l.width, l.height) < kLeast)
    remarks.push_back(
        fmt::format("many programs reject raw frames below {0}x{0}; this one is {1}x{2}", kLeast,
                    l.width, l.height));
  return remarks;
}

void printRemarks(const std::filesystem::path& path, const vistrel_layout& layout,
                  const PictureDetails& details) {
  for (const std::string& remark : remarksOn(pictureType(path), layout, details))
    fmt::print(stderr, "vistrel: {}: {}\n", path.string(), remark);
}

void checkHolds(const PictureType& type, const vistrel_layout& l, const PictureDetails& details) {
  constexpr uint32_t kMostOfPng = 0x7FFFFFFF;
  if (type.write == writeJpeg) checkJpeg(l);
  if (isDng(type)) checkDng(l, details);
  if (type.write == writePng && std::max(l.width, l.height) > kMostOfPng)
    throwError(kRejected, "{}x{} pixels: a .png has at most {}x{}", l.width, l.height, kMostOfPng,
               kMostOfPng);
}

void savePicture(const Image& image, const PictureDetails& details,
                 const std::filesystem::path& to) {
  writePicture(image, details, to)->commit();
}

std::unique_ptr<AtomicFile> writePicture(const Image& image, const PictureDetails& details,
                                         const std::filesystem::path& to) {
  const PictureType& type = pictureType(to);
  checkHolds(type, image.layout, details);
  auto picture = std::make_unique<AtomicFile>(to);
  type.write(image, details, *picture);
  return picture;
}

void writeRaw(const Image& image, const PictureDetails&, AtomicFile& file) {
  if (image.layout.bits <= 8) return file.write(image.pixels.data(), image.pixels.size());
  PictureRows rows(image, Depth::kKept, std::endian::little);
  for (uint32_t y = 0; y < rows.count(); ++y) file.write(rows.row(y), rows.bytes());
}

}  // namespace vistrel::app
