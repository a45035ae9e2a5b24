#include <utility>

#include "tests/reference/demosaic.h"
#include "tests/reference/directional.h"
#include "tests/reference/host.h"
#include "tests/reference/output.h"
#include "tests/reference/registry.h"
#include "vistrel/cfa.h"

namespace reference {

namespace {

// A work buffer and a table in the reference's table of streams, as long as this lives.
class OwnSlot {
 public:
  static constexpr uint32_t kIndex = 0;

  OwnSlot(uint32_t width, uint32_t height, std::vector<uint16_t> table)
      : work_((size_t{3} * width + 18) * (size_t{height} + 6)), table_(std::move(table)),
        savedWork_(std::exchange(g_pwBGRBuff[kIndex], work_.data())),
        savedBytes_(std::exchange(g_anBGRBytes[kIndex], 2 * work_.size())),
        savedTable_(std::exchange(g_pwUserLUT[kIndex], table_.data())),
        savedPath_(std::exchange(g_bIsSSE, 0)) {}
  ~OwnSlot() {
    g_pwBGRBuff[kIndex] = savedWork_;
    g_anBGRBytes[kIndex] = savedBytes_;
    g_pwUserLUT[kIndex] = savedTable_;
    g_bIsSSE = savedPath_;
  }
  OwnSlot(const OwnSlot&) = delete;
  OwnSlot& operator=(const OwnSlot&) = delete;

 private:
  std::vector<uint16_t> work_, table_;
  uint16_t* savedWork_;
  size_t savedBytes_;
  uint16_t* savedTable_;
  int32_t savedPath_;
};

// What the reference converts: the area's samples, as an image of its own.
struct Job {
  const vistrel_conversion& c;
  uint32_t phase, bits, format;
  uint32_t imageWidth;     // samples
  uint32_t width, height;  // of the result, padding included
};

template <class... Arguments>
void demosaic(const vistrel_conversion& c, Arguments... a) {
  constexpr uint32_t n = OwnSlot::kIndex;
  switch (c.algorithm) {
    case VISTREL_BILINEAR: return ImageColorBilinear(n, a...);
    case VISTREL_EDGE: return ImageColorDemosaicEx(n, c.threshold, a...);
    case VISTREL_NEAR: return ImageColorNearNeighbor(n, a...);
    case VISTREL_LAROCHE: return ImageColorGradientLaroche(n, a...);
    case VISTREL_HAMILTON: return ImageColorGradientHamilton(n, a...);
    case VISTREL_VNG: return ImageColorVariableGradients(n, a...);
    case VISTREL_COK: return ImageColorHueCok(n, a...);
    case VISTREL_KIMMEL: return ImageColorHueKimmel(n, a...);
    case VISTREL_GROUPING: return ImageColorPixelGrouping(n, a...);
    case VISTREL_AHD: return ImageColorDemosaicAHD(n, a...);
  }
}

// Finished pixels, blue first.
template <class T>
std::vector<T> directional(const Job& j, const T* samples) {
  constexpr int kGrids[] = {CFA_GRID_GRBG, CFA_GRID_BGGR, CFA_GRID_RGGB, CFA_GRID_GBRG};
  const uint32_t width = j.width * j.c.binning, height = j.height * j.c.binning;
  DirectionalFrame frame{static_cast<int>(width),
                         static_cast<int>(height),
                         static_cast<int>(j.bits),
                         kGrids[j.phase],
                         {}};
  for (uint32_t y = 0; y < height; ++y)
    frame.samples.insert(frame.samples.end(), samples + y * j.imageWidth,
                         samples + y * j.imageWidth + width);
  const std::vector<uint16_t> rgb = demosaicDirectional(frame);
  std::vector<T> pixels;
  for (size_t i = 0; i < rgb.size(); i += 3)
    for (const size_t channel : {2, 1, 0}) pixels.push_back(static_cast<T>(rgb[i + channel]));
  return pixels;
}

template <class T>
void convertDirectional(Job j, const T* samples, uint8_t* result);

void convert(const Job& j, const uint8_t* samples, uint8_t* result) {
  const uint32_t binning = j.c.binning - 1;
  if (j.phase == VISTREL_MONO)
    Image8BitGrayScale(samples, j.imageWidth, 0, 8, result, 0, 0, j.width, j.height, binning);
  else if (j.phase == VISTREL_BGR)
    ConvertToOutputFormat8(samples, j.width, j.height, result, j.format, binning, 0);
  else if (j.c.algorithm == VISTREL_DIRECTIONAL)
    convertDirectional(j, samples, result);
  else
    demosaic(j.c, j.imageWidth, j.phase, binning, j.format, 0u, 0u, j.width, j.height, samples,
             result);
}

void convert(const Job& j, const uint16_t* samples, uint8_t* result) {
  const uint32_t binning = j.c.binning - 1, mode = j.c.reduction;
  const uint32_t bits = hostSampleBytes(j.format) == 2 ? j.bits : 8;
  const uint32_t pixelBits = bits * static_cast<uint32_t>(hostChannels(j.format));
  uint16_t* const table = g_pwUserLUT[OwnSlot::kIndex];
  if (j.format == VISTREL_MONO16)
    Image16BitGrayScale(samples, j.imageWidth, 0, j.bits, reinterpret_cast<uint16_t*>(result), 0, 0,
                        j.width, j.height, bits, binning, mode);
  else if (j.phase == VISTREL_MONO)
    Image8BitGrayScale(samples, j.imageWidth, 0, j.bits, result, 0, 0, j.width, j.height, binning,
                       mode, table);
  else if (j.phase == VISTREL_BGR)
    ConvertToOutputFormat16(samples, j.width, j.height, j.bits, result, j.format, mode, table,
                            binning, pixelBits, 0);
  else if (j.c.algorithm == VISTREL_DIRECTIONAL)
    convertDirectional(j, samples, result);
  else
    demosaic(j.c, j.imageWidth, j.phase, binning, j.format, mode, 0u, 0u, j.width, j.height,
             samples, result, pixelBits, j.bits);
}

// From a mosaic to finished pixels, and from there to the format.
template <class T>
void convertDirectional(Job j, const T* samples, uint8_t* result) {
  const std::vector<T> pixels = directional(j, samples);
  j.phase = VISTREL_BGR;
  convert(j, pixels.data(), result);
}

// The area as an image, of bytes or of 16-bit samples.
template <class T>
std::vector<T> imageOf(const HostSamples& frame, const HostArea& area) {
  std::vector<T> image;
  for (int64_t y = area.y; y < area.y + area.height; ++y)
    for (int64_t x = area.x; x < area.x + area.width; ++x)
      for (size_t c = 0; c < frame.channels; ++c)
        image.push_back(
            static_cast<T>(frame.at(static_cast<size_t>(HostArea::mirrored(x, frame.width)),
                                    static_cast<size_t>(HostArea::mirrored(y, frame.height)), c)));
  return image;
}

// The phase of a mosaic that begins at (x, y).
uint32_t phaseAt(uint32_t phase, int64_t x, int64_t y) {
  if (phase > VISTREL_GBRG) return phase;
  for (uint32_t shifted = 0;; ++shifted)
    if (hostColour(shifted, 0, 0) == hostColour(phase, x, y) &&
        hostColour(shifted, 1, 0) == hostColour(phase, x + 1, y) &&
        hostColour(shifted, 0, 1) == hostColour(phase, x, y + 1))
      return shifted;
}

bool isGray(uint32_t format) { return format == VISTREL_GRAY8 || format == VISTREL_GRAY16; }

// The format in which the reference makes the pixels.
uint32_t madeFormat(const vistrel_frame& frame, const vistrel_conversion& c) {
  const bool isWide = hostSampleBytes(c.format) == 2;
  if (frame.phase == VISTREL_MONO || (isGray(c.format) && c.gray == VISTREL_RAW_GRAY))
    return c.format;
  return isWide ? VISTREL_BGR48 : VISTREL_BGR24;
}

// The table for every sample of twelve bits or fewer.
std::vector<uint16_t> tableOf(const vistrel_conversion& c, uint32_t bits) {
  std::vector<uint16_t> table(4096);
  if (c.reduction != VISTREL_TABLE) return table;
  for (size_t i = 0; i < size_t{1} << bits; ++i)
    table[i] = c.table[c.table_entries == 1024 ? i >> (bits - 10) : i];
  return table;
}

}  // namespace

int64_t HostArea::mirrored(int64_t position, int64_t size) {
  while (position < 0 || position >= size)
    position = position < 0 ? -position : 2 * (size - 1) - position;
  return position;
}

HostArea hostArea(const vistrel_frame& frame, const vistrel_conversion& c) {
  vistrel_region r = c.region;
  if (!r.x && !r.y && !r.width && !r.height) r = {0, 0, frame.width, frame.height};
  const bool isPadded = frame.phase <= VISTREL_GBRG && c.edges == VISTREL_EDGES_PADDED;
  const uint32_t least = c.algorithm == VISTREL_DIRECTIONAL ? 10 : 8;
  const uint32_t samples = isPadded ? (least + c.binning - 1) / c.binning * c.binning : 0;
  HostArea a{};
  a.resultWidth = r.width / c.binning;
  a.resultHeight = r.height / c.binning;
  a.pad = samples / c.binning;
  a.x = int64_t{r.x} - samples;
  a.y = int64_t{r.y} - samples;
  a.width = a.resultWidth * c.binning + 2 * samples;
  a.height = a.resultHeight * c.binning + 2 * samples;
  return a;
}

std::array<uint32_t, 2> hostImageSize(const vistrel_frame& frame, const vistrel_conversion& c) {
  const HostArea area = hostArea(frame, c);
  if (c.orientation >= VISTREL_TRANSPOSED) return {area.resultHeight, area.resultWidth};
  return {area.resultWidth, area.resultHeight};
}

namespace {

// The mean of each bin of an image of the area.
template <class T>
std::vector<T> meansOf(const std::vector<T>& image, const HostArea& area, size_t channels,
                       size_t binning) {
  std::vector<T> means;
  for (size_t y = 0; y < area.height / binning; ++y)
    for (size_t x = 0; x < area.width / binning; ++x)
      for (size_t c = 0; c < channels; ++c) {
        size_t sum = 0, n = binning * binning;
        for (size_t i = 0; i < n; ++i)
          sum += image[((y * binning + i / binning) * area.width + x * binning + i % binning) *
                           channels +
                       c];
        means.push_back(static_cast<T>((sum + n / 2) / n));
      }
  return means;
}

template <class T>
std::vector<T> converted(const Job& job, const std::vector<T>& image) {
  const size_t sampleBytes = hostSampleBytes(job.format);
  std::vector<uint8_t> made(size_t{job.width} * job.height * hostChannels(job.format) *
                            sampleBytes);
  convert(job, image.data(), made.data());
  std::vector<T> samples(made.size() / sampleBytes);
  for (size_t i = 0; i < samples.size(); ++i)
    samples[i] = static_cast<T>(sampleBytes == 2 ? reinterpret_cast<const uint16_t*>(made.data())[i]
                                                 : made[i]);
  return samples;
}

// The pixels of the area before they are cropped, finished and stored.
template <class T>
std::vector<T> pixelsOf(const vistrel_frame& frame, const vistrel_conversion& c,
                        const HostArea& area, uint32_t format) {
  const std::vector<T> image = imageOf<T>(hostSamples(frame, c), area);
  const uint32_t bits = hostBits(frame, c), phase = phaseAt(frame.phase, area.x, area.y);
  const uint32_t width = area.width / c.binning, height = area.height / c.binning;
  if (c.binning == 1 || c.bin_mode == VISTREL_BIN_SUM)
    return converted<T>({c, phase, bits, format, area.width, width, height}, image);
  vistrel_conversion single = c, whole = c;
  single.binning = whole.binning = 1;
  whole.reduction = VISTREL_WINDOW_HIGH;
  if (phase == VISTREL_MONO || phase == VISTREL_BGR)
    return converted<T>({single, phase, bits, format, width, width, height},
                        meansOf(image, area, phase == VISTREL_BGR ? 3 : 1, c.binning));
  const uint32_t full = sizeof(T) == 2 ? VISTREL_BGR48 : VISTREL_BGR24;
  const auto pixels =
      converted<T>({whole, phase, bits, full, area.width, area.width, area.height}, image);
  return converted<T>({single, VISTREL_BGR, bits, format, width, width, height},
                      meansOf(pixels, area, 3, c.binning));
}

// The crop of a padded result.
template <class T>
HostPixels croppedTo(const HostArea& area, size_t width, uint32_t channels,
                     const std::vector<T>& made) {
  HostPixels pixels{area.resultWidth, area.resultHeight, channels, {}};
  for (size_t y = area.pad; y < area.pad + area.resultHeight; ++y)
    for (size_t k = area.pad * channels; k < (area.pad + area.resultWidth) * channels; ++k)
      pixels.samples.push_back(made[y * width * channels + k]);
  return pixels;
}

}  // namespace

HostPixels hostPixels(const vistrel_frame& frame, const vistrel_conversion& c) {
  const HostArea area = hostArea(frame, c);
  const bool isMono = frame.phase == VISTREL_MONO;
  const uint32_t wide = isMono ? uint32_t{VISTREL_MONO16} : uint32_t{VISTREL_BGR48};
  const uint32_t format = c.finish ? wide : madeFormat(frame, c);
  const OwnSlot slot(area.width, area.height, tableOf(c, hostBits(frame, c)));
  const size_t width = area.width / c.binning;
  const auto channels = static_cast<uint32_t>(hostChannels(format));
  HostPixels pixels =
      frame.bytes_per_sample == 1 && !c.finish
          ? croppedTo(area, width, channels, pixelsOf<uint8_t>(frame, c, area, format))
          : croppedTo(area, width, channels, pixelsOf<uint16_t>(frame, c, area, format));
  if (c.finish) pixels = hostFinished(pixels, hostBits(frame, c), frame, c);
  return hostTurned(pixels, c.orientation);
}

}  // namespace reference
