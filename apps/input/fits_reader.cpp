#include "apps/input/readers.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>

#include "apps/error.h"
#include "apps/input/fits_input.h"
#include "apps/input/gzip_stream.h"
#include "apps/input/real_samples.h"
#include "apps/names/phase_names.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

void checkShape(const FitsShape& s) {
  if (s.axes != 2 && s.axes != 3)
    throwError(kRejected, "FITS: {} axes: 2 or 3 are expected", s.axes);
  for (const LONGLONG n : s.size)
    if (n < 1 || n > UINT32_MAX)
      throwError(kRejected, "FITS: an axis of {}: 1 to {} are allowed", n, UINT32_MAX);
  if (!std::isfinite(s.scale) || !std::isfinite(s.zero) || s.scale == 0)
    throwError(kRejected, "FITS: BSCALE {}, BZERO {}: numbers are expected, BSCALE not 0", s.scale,
               s.zero);
}

// The phase that the header names, or VISTREL_MONO if it is invalid.
uint32_t phaseOf(std::string pattern) {
  std::ranges::transform(pattern, pattern.begin(), [](unsigned char c) { return std::toupper(c); });
  uint32_t phase = 0;
  while (phase < VISTREL_MONO && pattern != phaseNames(phase).fits) ++phase;
  return phase;
}

// Sets the phase at the first row and column in the file.
void readPhase(FitsInput& file, Description& d) {
  const char* keyword = "BAYERPAT";
  if (file.text(keyword).empty()) keyword = "COLORTYP";
  const std::string pattern = file.text(keyword);
  if (pattern.empty()) return;
  const uint32_t phase = phaseOf(pattern);
  if (phase == VISTREL_MONO)
    d.phaseFault =
        fmt::format("FITS: {} {:?}: RGGB, BGGR, GRBG and GBRG are known", keyword, pattern);
  const double x = file.number("XBAYROFF", 0), y = file.number("YBAYROFF", 0);
  if (std::trunc(x) != x || std::trunc(y) != y)
    d.phaseFault = fmt::format("FITS: XBAYROFF {}, YBAYROFF {}: whole numbers are expected", x, y);
  const auto isOdd = [](double offset) -> uint32_t { return std::fmod(offset, 2) != 0; };
  if (d.phaseFault.empty()) d.phase = vistrel_phase_at(phase, isOdd(x), isOdd(y));
}

// The keywords that observatories agree on.
CameraMetadata readMetadata(FitsInput& file) {
  CameraMetadata m;
  m.exposureTime = file.numberIfValid("EXPTIME");
  if (!m.exposureTime) m.exposureTime = file.numberIfValid("EXPOSURE");
  m.gain = file.numberIfValid("GAIN");
  m.focalLength = file.numberIfValid("FOCALLEN");
  m.model = plainText(file.textIfValid("INSTRUME").value_or(""));
  m.date = plainDate(file.textIfValid("DATE-OBS").value_or(""));
  return m;
}

// Zeros take next to no space in tiles.
constexpr uint64_t kMaxTileRatio = 10000;

class FitsReader : public Reader {
 public:
  FitsReader(const Source& source, const InputOptions& o) : file_(source) {
    const FitsShape& s = file_.shape();
    checkShape(s);
    describe(s, source);
    if (!s.isWhole()) findRange(o);
    isBottomUp_ = file_.text("ROWORDER") == "BOTTOM-UP";
    Description& d = description_;
    d.trailing = file_.trailing();
    readPhase(file_, d);
    d.camera = readMetadata(file_);
    dropInvalid(d.camera, d.width, d.height, d.warnings);
    if (d.phase && isBottomUp_) d.phase = vistrel_phase_at(*d.phase, 0, d.height - 1);
  }

  void read(uint64_t n, void* to) override {
    if (description_.range)
      readReals(n, static_cast<uint16_t*>(to));
    else
      file_.readPlane(n, description_.bytesPerSample == 2, to);
    if (isBottomUp_) flip(static_cast<uint8_t*>(to));
  }

 private:
  void describe(const FitsShape& s, const Source& source) {
    Description& d = description_;
    d.format = "FITS";
    d.width = static_cast<uint32_t>(s.size[0]);
    d.height = static_cast<uint32_t>(s.size[1]);
    d.frames = static_cast<uint64_t>(s.size[2]);
    const bool asStored = s.bits == BYTE_IMG && s.scale == 1 && s.zero == 0;
    d.bytesPerSample = asStored ? 1 : 2;
    d.bits = 8 * d.bytesPerSample;
    d.bitsKnown = asStored;
    const auto stored = static_cast<uint32_t>(std::abs(s.bits));
    checkSize(d, source, stored, s.bytes / d.frames, s.isCompressed ? kMaxTileRatio : 1);
  }

  void findRange(const InputOptions& o) {
    Description& d = description_;
    RealValues values;
    std::vector<double> row(d.width);
    for (uint64_t n = 0; n < d.frames; ++n)
      for (uint32_t y = 0; y < d.height; ++y) {
        file_.readRow(n, y, row.data());
        values.add(row.data(), row.size());
      }
    d.range = o.range.value_or(usualRange(values));
    d.bitsKnown = !isIdentity(*d.range);
    d.warnings.push_back(rangeNote(*d.range, values));
  }

  void readReals(uint64_t n, uint16_t* to) {
    std::vector<double> row(description_.width);
    for (uint32_t y = 0; y < description_.height; ++y, to += row.size()) {
      file_.readRow(n, y, row.data());
      scaleToSamples(row.data(), row.size(), *description_.range, to);
    }
  }

  void flip(uint8_t* samples) const {
    const size_t row = size_t{description_.width} * description_.bytesPerSample;
    uint8_t *top = samples, *bottom = samples + (description_.height - 1) * row;
    for (; top < bottom; top += row, bottom -= row) std::swap_ranges(top, top + row, bottom);
  }

  FitsInput file_;
  bool isBottomUp_ = false;
};

bool recognisesFits(const Source&, const std::string& head) {
  return head.substr(0, 9) == "SIMPLE  =";
}

bool recognisesGzip(const Source&, const std::string& head) { return beginsGzip(head); }

std::unique_ptr<Reader> openFits(const Source& source, const InputOptions& options) {
  return std::make_unique<FitsReader>(source, options);
}

}  // namespace

const ReaderType kFits{"FITS", recognisesFits, openFits};
const ReaderType kGzipFits{"gzip", recognisesGzip, openFits};

}  // namespace vistrel::app
