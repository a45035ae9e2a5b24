#include "apps/input/tiff_metadata.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <span>

#include "apps/error.h"
#include "apps/input/tiff_input.h"

namespace vistrel::app {
namespace {

// libtiff returns rationals as floats: the shortest decimal that rounds to such a float, which is
// what the file meant to say.
double decimalOf(float value) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, value).ptr;
  double decimal = 0;
  std::from_chars(text, end, decimal);
  return decimal;
}

// The temperature of an EXIF light source: that of a CIE illuminant, or the middle of a range.
std::optional<double> temperatureOfSource(uint32_t code) {
  constexpr std::pair<uint32_t, double> sources[] = {
      {1, 5500},  {2, 4150},  {3, 2856},  {4, 5500},   // daylight, fluorescent, tungsten, flash
      {9, 5500},  {10, 6500}, {11, 7500},              // fine weather, cloudy, shade
      {12, 6400}, {13, 5050}, {14, 4150},              // fluorescent: daylight, day white, cool
      {15, 3525}, {16, 2925},                          // white, warm
      {17, 2856}, {18, 4874}, {19, 6774},              // A, B, C
      {20, 5503}, {21, 6504}, {22, 7504}, {23, 5003},  // D55, D65, D75, D50
      {24, 3200}};                                     // studio tungsten
  for (const auto& [source, temperature] : sources)
    if (source == code) return temperature;
  return {};
}

class MetadataReader {
 public:
  MetadataReader(const Source& source, std::vector<std::string>& warnings)
      : tiff_(source), warnings_(warnings) {}

  CameraMetadata read(uint64_t offset) {
    CameraMetadata m;
    readCamera(m);
    readColours(m);
    readExposure(m);
    const bool isAssumed = hasAssumedColours();
    if (TIFFSetSubDirectory(tiff_.handle(), offset)) readFrame(m);
    if (isAssumed) forgetAssumptions(m);
    return m;
  }

 private:
  // A DNG must have a matrix. That of an unknown camera, which this program writes, has no light.
  bool hasAssumedColours() const {
    return text(TIFFTAG_SOFTWARE).value_or("").starts_with("vistrel ") &&
           code(TIFFTAG_CALIBRATIONILLUMINANT1).value_or(0) == 0;
  }

  static void forgetAssumptions(CameraMetadata& m) {
    m.calibrations.clear();
    if (m.black && std::ranges::max(*m.black) == 0) m.black.reset();
  }

  // The main directory
  void readCamera(CameraMetadata& m) const {
    m.make = text(TIFFTAG_MAKE);
    m.model = text(TIFFTAG_MODEL);
    if (!m.model) m.model = text(TIFFTAG_UNIQUECAMERAMODEL);
    m.date = date(TIFFTAG_DATETIME);
    m.orientation = code(TIFFTAG_ORIENTATION);
    m.baselineExposure = number(TIFFTAG_BASELINEEXPOSURE);
  }

  void readColours(CameraMetadata& m) {
    m.neutral = array<3>(TIFFTAG_ASSHOTNEUTRAL);
    if (const auto xy = pair(TIFFTAG_ASSHOTWHITEXY)) m.light = {(*xy)[0], (*xy)[1]};
    m.analogBalance = array<3>(TIFFTAG_ANALOGBALANCE);
    addCalibration(m, TIFFTAG_COLORMATRIX1, TIFFTAG_CAMERACALIBRATION1,
                   TIFFTAG_CALIBRATIONILLUMINANT1);
    addCalibration(m, TIFFTAG_COLORMATRIX2, TIFFTAG_CAMERACALIBRATION2,
                   TIFFTAG_CALIBRATIONILLUMINANT2);
  }

  void addCalibration(CameraMetadata& m, uint32_t matrix, uint32_t individual,
                      uint32_t illuminant) {
    const auto fromXyz = array<9>(matrix);
    if (!fromXyz) return;
    m.calibrations.push_back({*fromXyz, array<9>(individual).value_or(kIdentity),
                              temperatureOfSource(code(illuminant).value_or(0))});
  }

  void readExposure(CameraMetadata& m) const {
    uint64_t offset = 0;
    TIFF* const t = tiff_.handle();
    if (!TIFFGetField(t, TIFFTAG_EXIFIFD, &offset) || !TIFFReadEXIFDirectory(t, offset)) return;
    m.exposureTime = number(EXIFTAG_EXPOSURETIME);
    m.aperture = number(EXIFTAG_FNUMBER);
    m.focalLength = number(EXIFTAG_FOCALLENGTH);
    uint16_t count = 0;
    const uint16_t* speeds = nullptr;
    if (TIFFGetField(t, EXIFTAG_ISOSPEEDRATINGS, &count, &speeds) && count) m.iso = speeds[0];
    if (const auto taken = date(EXIFTAG_DATETIMEORIGINAL)) m.date = taken;
  }

  // The directory of the frame
  void readFrame(CameraMetadata& m) {
    m.black = blackLevels();
    if (const auto white = meanOf<uint32_t>(TIFFTAG_WHITELEVEL)) m.white = white;
    if (const auto orientation = code(TIFFTAG_ORIENTATION)) m.orientation = orientation;
    m.crop = crop();
  }

  // A pattern of any size is averaged at each place of the 2x2 block. BlackLevelDeltaH and V are
  // added as their means.
  std::optional<std::array<double, 4>> blackLevels() {
    const uint16_t* size = nullptr;
    uint32_t rows = 1, columns = 1;
    if (TIFFGetField(tiff_.handle(), TIFFTAG_BLACKLEVELREPEATDIM, &size))
      rows = size[0], columns = size[1];
    const auto pattern = floats(TIFFTAG_BLACKLEVEL);
    if (pattern.empty() || !hasCount(TIFFTAG_BLACKLEVEL, pattern.size(), size_t{rows} * columns))
      return {};
    const double delta = meanOf<float>(TIFFTAG_BLACKLEVELDELTAH).value_or(0) +
                         meanOf<float>(TIFFTAG_BLACKLEVELDELTAV).value_or(0);
    std::array<double, 4> black{};
    for (uint32_t y = 0; y < 2 * rows; ++y)
      for (uint32_t x = 0; x < 2 * columns; ++x)
        black[2 * (y % 2) + x % 2] += pattern[y % rows * columns + x % columns];
    for (double& level : black) level = level / (double{1} * rows * columns) + delta;
    return black;
  }

  std::optional<Crop> crop() const {
    const auto size = pair(TIFFTAG_DEFAULTCROPSIZE);
    if (!size) return {};
    const auto origin = pair(TIFFTAG_DEFAULTCROPORIGIN).value_or(std::array<double, 2>{});
    // what exceeds any frame becomes 0xFFFFFFFF
    const auto pixels = [](double v) {
      return v >= 0 && v < 4e9 ? static_cast<uint32_t>(v + 0.5) : UINT32_MAX;
    };
    return Crop{pixels(origin[0]), pixels(origin[1]), pixels((*size)[0]), pixels((*size)[1])};
  }

  bool hasCount(uint32_t tag, size_t count, size_t expected) {
    if (count != expected)
      warnings_.push_back(fmt::format("TIFF: {} values of {}, {} are expected; not used", count,
                                      TIFFFieldName(TIFFFieldWithTag(tiff_.handle(), tag)),
                                      expected));
    return count == expected;
  }

  // Valid until the next directory is read.
  template <class T>
  std::span<const T> values(uint32_t tag) const {
    uint16_t count = 0;
    const T* first = nullptr;
    if (!TIFFGetField(tiff_.handle(), tag, &count, &first)) return {};
    return {first, first + count};
  }

  std::vector<double> floats(uint32_t tag) const {
    const auto read = values<float>(tag);
    std::vector<double> result(read.size());
    std::ranges::transform(read, result.begin(), decimalOf);
    return result;
  }

  template <class T>
  std::optional<double> meanOf(uint32_t tag) const {
    const auto all = values<T>(tag);
    if (all.empty()) return {};
    return std::accumulate(all.begin(), all.end(), 0.0) / static_cast<double>(all.size());
  }

  template <size_t N>
  std::optional<std::array<double, N>> array(uint32_t tag) {
    const auto read = floats(tag);
    if (read.empty() || !hasCount(tag, read.size(), N)) return {};
    std::array<double, N> result{};
    std::ranges::copy(read, result.begin());
    return result;
  }

  std::optional<std::array<double, 2>> pair(uint32_t tag) const {
    const float* read = nullptr;
    if (!TIFFGetField(tiff_.handle(), tag, &read)) return {};
    return std::array{decimalOf(read[0]), decimalOf(read[1])};
  }

  std::optional<double> number(uint32_t tag) const {
    float read = 0;
    if (!TIFFGetField(tiff_.handle(), tag, &read)) return {};
    return decimalOf(read);
  }

  std::optional<uint32_t> code(uint32_t tag) const {
    uint16_t read = 0;
    if (!TIFFGetField(tiff_.handle(), tag, &read)) return {};
    return read;
  }

  std::optional<std::string> text(uint32_t tag) const {
    const char* read = nullptr;
    if (!TIFFGetField(tiff_.handle(), tag, &read)) return {};
    return plainText(read);
  }

  std::optional<std::string> date(uint32_t tag) const {
    const char* read = nullptr;
    if (!TIFFGetField(tiff_.handle(), tag, &read)) return {};
    return plainDate(read);
  }

  TiffInput tiff_;
  std::vector<std::string>& warnings_;
};

}  // namespace

CameraMetadata readTiffMetadata(const Source& source, uint64_t offset,
                                std::vector<std::string>& warnings) {
  return MetadataReader(source, warnings).read(offset);
}

}  // namespace vistrel::app
