#include <algorithm>
#include <array>
#include <cmath>

#include "apps/pictures/picture.h"
#include "apps/pictures/tiff_output.h"

namespace vistrel::app {
namespace {

void describeFile(TIFF* t, const DngCamera& camera) {
  constexpr uint8_t kVersion[] = {1, 4, 0, 0}, kOldestReader[] = {1, 1, 0, 0};
  TIFFSetField(t, TIFFTAG_SUBFILETYPE, 0);
  TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_CFA);
  TIFFSetField(t, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
  TIFFSetField(t, TIFFTAG_DNGVERSION, kVersion);
  TIFFSetField(t, TIFFTAG_DNGBACKWARDVERSION, kOldestReader);
  TIFFSetField(t, TIFFTAG_UNIQUECAMERAMODEL, camera.model.c_str());
  TIFFSetField(t, TIFFTAG_ORIENTATION, camera.orientation);
}

void describeFilters(TIFF* t, uint32_t phase) {
  constexpr uint16_t kBlock[] = {2, 2}, kRectangular = 1;
  constexpr uint8_t kPlanes[] = {0, 1, 2};  // red, green, blue
  uint8_t pattern[4];                       // the library's codes of colours are those of the tag
  for (uint32_t i = 0; i < 4; ++i)
    pattern[i] = static_cast<uint8_t>(vistrel_colour_at(phase, i % 2, i / 2));
  TIFFSetField(t, TIFFTAG_CFAREPEATPATTERNDIM, kBlock);
  TIFFSetField(t, TIFFTAG_CFAPATTERN, 4, pattern);
  TIFFSetField(t, TIFFTAG_CFAPLANECOLOR, 3, kPlanes);
  TIFFSetField(t, TIFFTAG_CFALAYOUT, kRectangular);
}

void describeLevels(TIFF* t, const DngCamera& camera) {
  constexpr uint16_t kBlock[] = {2, 2};
  float black[4];
  std::ranges::transform(camera.black, black, [](double v) { return static_cast<float>(v); });
  TIFFSetField(t, TIFFTAG_BLACKLEVELREPEATDIM, kBlock);
  TIFFSetField(t, TIFFTAG_BLACKLEVEL, 4, black);
  TIFFSetField(t, TIFFTAG_WHITELEVEL, 1, &camera.white);
}

void describeArea(TIFF* t, const vistrel_layout& l) {
  const uint32_t area[] = {0, 0, l.height, l.width};
  const float origin[] = {0, 0};
  const float size[] = {static_cast<float>(l.width), static_cast<float>(l.height)};
  TIFFSetField(t, TIFFTAG_ACTIVEAREA, area);
  TIFFSetField(t, TIFFTAG_DEFAULTCROPORIGIN, origin);
  TIFFSetField(t, TIFFTAG_DEFAULTCROPSIZE, size);
}

template <size_t N>
std::array<float, N> rounded(const std::array<double, N>& values) {
  constexpr double kSteps = 65536;
  std::array<float, N> result{};
  std::ranges::transform(values, result.begin(), [](double v) {
    return static_cast<float>(std::round(v * kSteps) / kSteps);
  });
  return result;
}

void describeColours(TIFF* t, const DngCamera& camera) {
  TIFFSetField(t, TIFFTAG_COLORMATRIX1, 9, rounded(camera.matrix).data());
  TIFFSetField(t, TIFFTAG_CALIBRATIONILLUMINANT1, camera.illuminant);
  if (camera.neutral) TIFFSetField(t, TIFFTAG_ASSHOTNEUTRAL, 3, rounded(*camera.neutral).data());
}

}  // namespace

void writeDng(const Image& image, const PictureDetails& details, AtomicFile& file) {
  const vistrel_layout& l = image.layout;
  const DngCamera& camera = details.camera.value();
  TiffOutput tiff(file, "wl");
  TIFF* const t = tiff.handle();
  tiff.describe(l, details);
  describeFile(t, camera);
  describeFilters(t, camera.phase);
  describeLevels(t, camera);
  describeArea(t, l);
  describeColours(t, camera);
  for (uint32_t y = 0; y < l.height; ++y) tiff.writeRow(&image.pixels[y * l.row_bytes], y);
  tiff.finish();
}

}  // namespace vistrel::app
