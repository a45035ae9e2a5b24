#include "apps/input/tiff_image.h"

#include <algorithm>
#include <bit>
#include <numeric>

#include "apps/error.h"
#include "apps/names/phase_names.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr size_t kMaxDirectories = 4096;

void readPhase(TIFF* tiff, TiffImage& image) {
  constexpr uint16_t rectangular = 1;
  uint16_t* repeat = nullptr;
  uint16_t count = 0, layout = rectangular;
  uint8_t* pattern = nullptr;
  TIFFGetField(tiff, TIFFTAG_CFALAYOUT, &layout);
  if (!TIFFGetField(tiff, TIFFTAG_CFAREPEATPATTERNDIM, &repeat) ||
      !TIFFGetField(tiff, TIFFTAG_CFAPATTERN, &count, &pattern))
    image.phaseFault = "TIFF: a mosaic without CFARepeatPatternDim and CFAPattern";
  else if (repeat[0] != 2 || repeat[1] != 2 || count != 4)
    image.phaseFault =
        fmt::format("TIFF: a mosaic of {}x{} filters, {} of them named: 2x2 are expected",
                    repeat[1], repeat[0], count);
  else if (layout != rectangular)
    image.phaseFault =
        fmt::format("TIFF: CFALayout {}: a rectangular mosaic, 1, is expected", layout);
  else if (const uint32_t phase = phaseOfBlock({pattern[0], pattern[1], pattern[2], pattern[3]});
           phase != VISTREL_MONO)
    image.phase = phase;
  else
    image.phaseFault = fmt::format("TIFF: CFAPattern {} {} {} {}: not one of the four Bayer phases",
                                   pattern[0], pattern[1], pattern[2], pattern[3]);
}

template <class T>
std::optional<double> meanOf(TIFF* tiff, uint32_t tag) {
  uint16_t count = 0;
  T* values = nullptr;
  if (!TIFFGetField(tiff, tag, &count, &values) || !count) return {};
  return std::accumulate(values, values + count, 0.0) / count;
}

// A photometric interpretation in which 0 is white, or the table of a DNG.
std::vector<uint16_t> tableOf(TIFF* tiff, const TiffImage& image) {
  uint16_t count = 0;
  uint16_t* values = nullptr;
  if (TIFFGetField(tiff, TIFFTAG_LINEARIZATIONTABLE, &count, &values) && count)
    return {values, values + count};
  if (image.photometric != PHOTOMETRIC_MINISWHITE || image.bits > 16) return {};
  std::vector<uint16_t> inverse(size_t{1} << image.bits);
  for (size_t i = 0; i < inverse.size(); ++i)
    inverse[i] = static_cast<uint16_t>(inverse.size() - 1 - i);
  return inverse;
}

// Sets the active area, if the file specifies one.
void readActiveArea(TIFF* tiff, TiffImage& image) {
  const uint32_t* area = nullptr;  // top, left, bottom, right
  if (!TIFFGetField(tiff, TIFFTAG_ACTIVEAREA, &area)) return;
  if (area[0] >= area[2] || area[1] >= area[3] || area[2] > image.rows || area[3] > image.columns)
    throwError(kRejected,
               "TIFF: ActiveArea {} {} {} {}: it exceeds the image of {}x{}, or is empty", area[0],
               area[1], area[2], area[3], image.columns, image.rows);
  image.y = area[0];
  image.x = area[1];
  image.height = area[2] - area[0];
  image.width = area[3] - area[1];
}

TiffImage currentImage(const TiffInput& tiff) {
  TIFF* const t = tiff.handle();
  TiffImage image{};
  image.offset = TIFFCurrentDirOffset(t);
  image.columns = image.width = tiff.get<uint32_t>(TIFFTAG_IMAGEWIDTH, 0);
  image.rows = image.height = tiff.get<uint32_t>(TIFFTAG_IMAGELENGTH, 0);
  image.bits = tiff.get<uint16_t>(TIFFTAG_BITSPERSAMPLE, 1);
  image.samplesPerPixel = tiff.get<uint16_t>(TIFFTAG_SAMPLESPERPIXEL, 1);
  image.photometric = tiff.get<uint16_t>(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
  image.compression = tiff.get<uint16_t>(TIFFTAG_COMPRESSION, COMPRESSION_NONE);
  image.sampleFormat = tiff.get<uint16_t>(TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
  image.reduced = tiff.get<uint32_t>(TIFFTAG_SUBFILETYPE, 0) & FILETYPE_REDUCEDIMAGE;
  image.table = tableOf(t, image);
  image.white = meanOf<uint32_t>(t, TIFFTAG_WHITELEVEL);
  return image;
}

// Appends the offsets of the current directory's subdirectories.
void addSubdirectories(TIFF* tiff, std::vector<uint64_t>& offsets) {
  uint16_t count = 0;
  uint64_t* below = nullptr;
  if (TIFFGetField(tiff, TIFFTAG_SUBIFD, &count, &below))
    offsets.insert(offsets.end(), below, below + count);
}

std::vector<TiffImage> allImages(TiffInput& tiff) {
  TIFF* const t = tiff.handle();
  std::vector<TiffImage> images;
  std::vector<uint64_t> below;
  do {
    images.push_back(currentImage(tiff));
    addSubdirectories(t, below);
  } while (images.size() < kMaxDirectories && TIFFReadDirectory(t));
  for (const uint64_t offset : below)
    if (images.size() < kMaxDirectories && TIFFSetSubDirectory(t, offset))
      images.push_back(currentImage(tiff));
  return images;
}

// That of the white level or the table; 0 if there is neither.
uint64_t largestSample(const TiffImage& image) {
  const auto white = static_cast<uint64_t>(image.white.value_or(0));
  return image.table.empty() ? white : std::max<uint64_t>(white, std::ranges::max(image.table));
}

}  // namespace

uint32_t bytesPerSample(const TiffImage& image) {
  return (image.table.empty() ? image.bits > 8 : largestSample(image) > 255) ? 2 : 1;
}

uint32_t significantBits(const TiffImage& image) {
  const auto bits = static_cast<uint32_t>(std::bit_width(largestSample(image)));
  if (!image.table.empty()) return std::clamp(bits, 8u, 8 * bytesPerSample(image));
  return bits >= 8 && bits < image.bits ? bits : image.bits;
}

std::vector<TiffImage> findTiffFrames(TiffInput& tiff) {
  std::vector<TiffImage> images = allImages(tiff), frames;
  const auto keep = [&](auto&& isFrame) {
    if (frames.empty()) std::ranges::copy_if(images, std::back_inserter(frames), isFrame);
  };
  keep([](const TiffImage& i) { return i.photometric == PHOTOMETRIC_CFA && !i.reduced; });
  keep([](const TiffImage& i) {
    return i.photometric <= PHOTOMETRIC_MINISBLACK && i.samplesPerPixel == 1 && !i.reduced;
  });
  if (frames.empty())
    throwError(
        kRejected,
        "a TIFF of {} samples a pixel, photometric interpretation {}: a mosaic of one sample a "
        "pixel or gray is expected",
        images[0].samplesPerPixel, images[0].photometric);
  for (TiffImage& image : frames) {
    if (!TIFFSetSubDirectory(tiff.handle(), image.offset))
      tiff.throwReadError("a directory is lost");
    readActiveArea(tiff.handle(), image);
    if (image.photometric == PHOTOMETRIC_CFA) readPhase(tiff.handle(), image);
  }
  return frames;
}

}  // namespace vistrel::app
