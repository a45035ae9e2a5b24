#include "apps/pictures/write_dng.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "apps/error.h"
#include "apps/pictures/picture.h"
#include "apps/pictures/tiff_output.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

void describeSamples(TIFF* t, const vistrel_layout& l) {
  TIFFSetField(t, TIFFTAG_SUBFILETYPE, 0);
  TIFFSetField(t, TIFFTAG_IMAGEWIDTH, l.width);
  TIFFSetField(t, TIFFTAG_IMAGELENGTH, l.height);
  TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, l.bits > 8 ? 16 : 8);
  TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, 1);
  TIFFSetField(t, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_CFA);
  TIFFSetField(t, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
  TIFFSetField(t, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(t, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(t, 0));
}

void describeFile(TIFF* t, const DngCamera& camera) {
  constexpr uint8_t kVersion[] = {1, 4, 0, 0}, kOldestReader[] = {1, 1, 0, 0};
  TIFFSetField(t, TIFFTAG_DNGVERSION, kVersion);
  TIFFSetField(t, TIFFTAG_DNGBACKWARDVERSION, kOldestReader);
  TIFFSetField(t, TIFFTAG_UNIQUECAMERAMODEL, camera.model.c_str());
  TIFFSetField(t, TIFFTAG_SOFTWARE, "vistrel " VISTREL_PROGRAM_VERSION);
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
  std::ranges::copy(camera.black, black);
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

DngCamera unknownCamera(uint32_t phase, uint32_t bits) {
  return {.phase = phase, .white = (1u << bits) - 1};
}

void printAssumedColours(const std::filesystem::path& path) {
  fmt::print(stderr, "vistrel: {}: the camera's colour matrix is unknown; using that of sRGB\n",
             path.string());
}

bool isDngName(const std::filesystem::path& path) {
  return path == "dng:-" || path.extension() == ".dng";
}

void writeDng(const Image& samples, const DngCamera& camera, AtomicFile& file) {
  const vistrel_layout& l = samples.layout;
  if (l.bytes > kMaxClassicBytes)
    throwError(kRejected, "{}x{} samples of {} bits: a DNG holds at most {} bytes of samples",
               l.width, l.height, l.bits, kMaxClassicBytes);
  TiffOutput tiff(file, "wl");
  TIFF* const t = tiff.handle();
  describeSamples(t, l);
  describeFile(t, camera);
  describeFilters(t, camera.phase);
  describeLevels(t, camera);
  describeArea(t, l);
  describeColours(t, camera);
  for (uint32_t y = 0; y < l.height; ++y) {
    const uint8_t* const from = samples.pixels.data() + y * l.row_bytes;
    std::vector<uint8_t> row(from, from + l.row_bytes);
    tiff.writeRow(row.data(), y);
  }
  tiff.finish();
}

}  // namespace vistrel::app
