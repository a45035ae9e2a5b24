#include "python/extension/request.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <thread>

#include "python/extension/arguments.h"

namespace vistrel::python {
namespace {

using py::handle;

// Options that are usually None or 0 cost a comparison then.
uint32_t integerOr(handle value, uint32_t otherwise, const Parameter& parameter) {
  return value.is_none() ? otherwise : integerOf(value, parameter);
}

void readRegion(handle value, vistrel_conversion& c) {
  if (value.is_none()) return;
  uint32_t r[4];
  integersOf(value, {"region", VISTREL_BAD_REGION}, r, 4);
  if (!r[2] || !r[3])  // all 0 would be the whole frame
    reject(VISTREL_BAD_REGION, "region", textOf(value), "it is empty");
  c.region = {r[0], r[1], r[2], r[3]};
}

void readReduction(handle window, handle curve, handle table, vistrel_conversion& c) {
  const Parameter parameter{"curve", VISTREL_BAD_REDUCTION};
  const uint32_t w = integerOf(window, {"window", VISTREL_BAD_REDUCTION}, 2);
  if ((w != 0) + !curve.is_none() + !table.is_none() > 1)
    reject(VISTREL_BAD_REDUCTION, "", "", "window, curve and table exclude each other");
  c.reduction = VISTREL_WINDOW_HIGH + w;
  if (!curve.is_none()) {
    const uint32_t number = integerOf(curve, parameter);
    if (number < 2 || number > 6)
      reject(VISTREL_BAD_REDUCTION, "curve", std::to_string(number), "2 to 6");
    c.reduction = VISTREL_CURVE_2 + number - 2;
  }
  if (!table.is_none()) {  // of uint16: the package sees to that
    const auto values = py::reinterpret_borrow<py::array>(table);
    c.reduction = VISTREL_TABLE;
    c.table = static_cast<const uint16_t*>(values.data());
    c.table_entries = static_cast<uint32_t>(std::min<py::ssize_t>(values.size(), 0xFFFFFFFF));
  }
}

void readBlack(handle value, vistrel_conversion& c) {
  if (value.is_none()) return;
  const Parameter parameter{"black", VISTREL_BAD_BLACK};
  if (PyIndex_Check(value.ptr()))
    std::fill_n(c.black, 4, integerOf(value, parameter));
  else
    integersOf(value, parameter, c.black, 4);
}

// In 1/4096, rounded.
uint32_t gainOf(handle value) {
  const double gain = numberOf(value, {"gains", VISTREL_BAD_BALANCE});
  constexpr double kOne = double{int{VISTREL_GAIN_ONE}}, kMax = double{int{VISTREL_GAIN_MAX}};
  const double scaled = gain * kOne;
  if (!(scaled >= 0.5 && scaled <= kMax))
    reject(VISTREL_BAD_BALANCE, "gains", textOf(value), "1/4096 to 16");
  return static_cast<uint32_t>(std::lround(scaled));
}

void readGains(handle value, vistrel_conversion& c) {
  if (value.is_none()) return;
  const std::string allowed = "\"gray-world\", or three numbers: red, green, blue";
  if (PyUnicode_Check(value.ptr())) {
    if (!value.equal(py::str("gray-world")))
      reject(VISTREL_BAD_BALANCE, "gains", textOf(value), allowed);
    c.white_balance = VISTREL_BALANCE_GRAY_WORLD;
    return;
  }
  const auto gains = sequenceOf(value, {"gains", VISTREL_BAD_BALANCE}, 3, allowed);
  c.white_balance = VISTREL_BALANCE_GAINS;
  for (size_t i = 0; i < 3; ++i) c.gains[i] = gainOf(py::object(gains[i]));
}

// 'u' 1, 'u' 2, 'f' 4; 0 for None.
struct SampleType {
  char kind = 0;
  py::ssize_t bytes = 0;
};

constexpr const char* kSampleTypes = "uint8, uint16 or float32";

py::dtype dtypeOf(handle value) {
  try {
    return py::dtype::from_args(py::reinterpret_borrow<py::object>(value));
  } catch (const py::error_already_set& error) {
    if (!error.matches(PyExc_TypeError) && !error.matches(PyExc_ValueError)) throw;
    rejectType(VISTREL_BAD_FORMAT, "dtype", textOf(value), kSampleTypes);
  }
}

SampleType sampleTypeOf(handle value) {
  if (value.is_none()) return {};
  const py::dtype dtype = dtypeOf(value);
  const SampleType type{dtype.kind(), dtype.itemsize()};
  const bool allowed =
      (type.kind == 'u' && type.bytes <= 2) || (type.kind == 'f' && type.bytes == 4);
  if (!allowed || !dtype.attr("isnative").cast<bool>())
    rejectType(VISTREL_BAD_FORMAT, "dtype", nameOf(dtype), kSampleTypes);
  return type;
}

uint32_t planarOf(uint32_t format) {
  switch (format) {
    case VISTREL_RGB24: return VISTREL_RGB24_PLANAR;
    case VISTREL_RGB48: return VISTREL_RGB48_PLANAR;
    default: return format;
  }
}

const vistrel_format& rowOf(uint32_t code) {
  size_t i = 0;
  while (vistrel_format_at(i)->code != code) ++i;
  return *vistrel_format_at(i);
}

// Without a format, the samples' type chooses one.
uint32_t defaultFormat(const vistrel_frame& frame, SampleType type, bool isDeep) {
  const bool deep = type.kind == 'f' ? isDeep : type.bytes == 2;
  if (frame.phase == VISTREL_MONO) return deep ? VISTREL_MONO16 : VISTREL_MONO8;
  return deep ? VISTREL_RGB48 : VISTREL_RGB24;
}

void checkFormat(handle format, SampleType type, Request& r) {
  const vistrel_format& row = rowOf(r.conversion.format);
  r.sampleBytes = row.bytes_per_sample;
  if (type.kind == 'u' && type.bytes != row.bytes_per_sample)
    reject(VISTREL_BAD_FORMAT, "dtype", textOf(py::dtype(type.bytes == 1 ? "u1" : "u2")),
           "the samples of " + std::string(row.name) + " are others");
  const bool chroma =
      row.code == VISTREL_NV12 || row.code == VISTREL_I420 || row.code == VISTREL_I444;
  if (chroma && r.floats)
    reject(VISTREL_BAD_FORMAT, "format", textOf(format), "its samples are bytes, not float32");
  if (r.planes && (chroma || (row.channels > 1 && row.planes == 1)))
    reject(VISTREL_BAD_FORMAT, "format", textOf(format), "with layout chw: rgb24 or rgb48");
}

void readFormat(handle format, handle layout, handle dtype, bool isDeep, Request& r) {
  static constexpr const char* kLayouts[] = {"hwc", "chw", nullptr};
  const SampleType type = sampleTypeOf(dtype);
  r.floats = type.kind == 'f';
  r.planes = choiceOf(layout, {"layout", VISTREL_BAD_FORMAT}, kLayouts) == 1;
  r.conversion.format = format.is_none()
                            ? defaultFormat(r.input.frame, type, isDeep)
                            : codeOf(format, {"format", VISTREL_BAD_FORMAT}, vistrel_parse_format);
  if (r.planes) r.conversion.format = planarOf(r.conversion.format);
  checkFormat(format, type, r);
  const uint32_t code = r.conversion.format;
  if (code == VISTREL_RGB24_PLANAR || code == VISTREL_RGB48_PLANAR || code == VISTREL_I444)
    r.planes = true;
}

void readModes(const py::args& a, vistrel_conversion& c) {
  static constexpr const char* kBinModes[] = {"sum", "mean", nullptr};
  static constexpr const char* kEdgeModes[] = {"native", "padded", nullptr};
  static constexpr const char* kGrays[] = {"luma", "raw", nullptr};
  static constexpr const char* kExcesses[] = {"reject", "mask", nullptr};
  c.bin_mode = choiceOf(a[kBinMode], {"bin_mode", VISTREL_BAD_BINNING}, kBinModes);
  c.edges = choiceOf(a[kEdges], {"edges", VISTREL_BAD_EDGES}, kEdgeModes);
  c.gray = choiceOf(a[kGray], {"gray", VISTREL_BAD_GRAY}, kGrays);
  c.excess = choiceOf(a[kExcess], {"excess", VISTREL_BAD_EXCESS}, kExcesses);
}

uint32_t threadsOf(handle value) {
  const uint32_t threads = integerOf(value, {"threads", VISTREL_BAD_THREADS}, VISTREL_MAX_THREADS);
  return threads
             ? threads
             : std::clamp<uint32_t>(std::thread::hardware_concurrency(), 1, VISTREL_MAX_THREADS);
}

}  // namespace

Request requestOf(const py::args& a) {
  Request r{frameOf(a[kRaw], a[kPhase], a[kBits], a[kAlign]), {}, false, false, 0, 1, nullptr};
  vistrel_conversion& c = r.conversion;
  vistrel_default_conversion(&r.input.frame, &c);
  c.algorithm =
      codeOf(a[kAlgorithm], {"algorithm", VISTREL_BAD_ALGORITHM}, vistrel_parse_algorithm);
  const bool isFinished = a.size() > kLook;  // all bits of a finished picture are significant
  readFormat(a[kFormat], a[kLayout], a[kDtype], isFinished || r.input.frame.bytes_per_sample == 2,
             r);
  readRegion(a[kRegion], c);
  c.binning = integerOf(a[kBinning], {"binning", VISTREL_BAD_BINNING});
  readReduction(a[kWindow], a[kCurve], a[kTable], c);
  readBlack(a[kBlack], c);
  c.white = integerOr(a[kWhite], 0, {"white", VISTREL_BAD_WHITE});
  readGains(a[kGains], c);
  c.threshold = integerOf(a[kThreshold], {"threshold", VISTREL_BAD_THRESHOLD});
  c.truncate_to = integerOr(a[kTruncateTo], 0, {"truncate_to", VISTREL_BAD_TRUNCATION});
  c.orientation = integerOf(a[kOrientation], {"orientation", VISTREL_BAD_ORIENTATION});
  readModes(a, c);
  r.threads = threadsOf(a[kThreads]);
  return r;
}

void calibrate(Request& request, const py::args& a, const uint32_t (&black)[4]) {
  if (a[kDark].is_none() && a[kFlat].is_none() && a[kHot].is_none()) return;
  request.calibration =
      std::make_unique<const Calibration>(a[kDark], a[kFlat], a[kHot], request.input, black);
  request.conversion.calibration = &request.calibration->get();
}

}  // namespace vistrel::python
