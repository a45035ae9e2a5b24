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

class MetadataReader {
 public:
  MetadataReader(const Source& source, std::vector<std::string>& warnings)
      : tiff_(source), warnings_(warnings) {}

  CameraMetadata read(uint64_t offset) {
    CameraMetadata m;
    readCamera(m);
    readColours(m);
    readExposure(m);
    const std::string software = text(TIFFTAG_SOFTWARE).value_or("");
    const uint32_t light = code(TIFFTAG_CALIBRATIONILLUMINANT1).value_or(0);
    if (TIFFSetSubDirectory(tiff_.handle(), offset)) readFrame(m);
    forgetAssumptions(m, software, light);
    for (const std::string& error : tiff_.errors()) warnings_.push_back(error + "; not used");
    return m;
  }

 private:
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

  // BlackLevelDeltaH and V are added as their means.
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
    return blackOfPattern(pattern, rows, columns, delta);
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
