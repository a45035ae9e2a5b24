#include "python/extension/convert.h"

#include <algorithm>
#include <optional>

#include "python/extension/floats.h"
#include "python/extension/request.h"
#include "python/extension/result.h"
#include "python/extension/stream.h"
#include "python/extension/teams.h"
#include "python/extension/unlocked.h"

namespace vistrel::python {
namespace {

// What runs without Python's lock.
struct Work {
  const vistrel_frame& frame;
  const vistrel_conversion& conversion;
  const Result& result;
  vistrel_stream* stream;  // null: any
};

int32_t convertWhole(const Work& w, vistrel_error& error) noexcept {
  return w.stream
             ? vistrel_stream_convert(w.stream, &w.frame, &w.conversion, &w.result.image, &error)
             : vistrel_convert(&w.frame, &w.conversion, &w.result.image, &error);
}

struct Floats {
  size_t bytes;
  float divisor;
};

// The scale of samples that keep the frame's bits is that of `white`; that of finished ones is
// full.
Floats floatsOf(const Request& r, const vistrel_layout& layout) {
  const bool keepsBits =
      layout.bits == r.input.frame.bits && r.conversion.white && !r.conversion.finish;
  const uint32_t divisor = keepsBits ? r.conversion.white : (1u << layout.bits) - 1;
  return {r.sampleBytes, static_cast<float>(divisor)};
}

// Whether rows can be widened while they are in cache.
bool takesPushedRows(const vistrel_conversion& c) {
  const bool rawGray = c.gray == VISTREL_RAW_GRAY && c.binning > 1;
  return c.threads < 2 && c.white_balance != VISTREL_BALANCE_GRAY_WORLD && !rawGray &&
         c.orientation <= VISTREL_UPRIGHT;
}

size_t strideOf(const vistrel_frame& frame) {
  if (frame.stride) return frame.stride;
  const size_t samples = frame.phase == VISTREL_BGR ? 3 : 1;
  return frame.width * samples * frame.bytes_per_sample;
}

// Pushes a few rows at a time, and widens what becomes final.
int32_t pushRows(const Work& w, const Floats& floats, vistrel_stream* stream,
                 vistrel_error& error) noexcept {
  constexpr size_t kBandBytes = size_t{1} << 17;
  int32_t status = vistrel_stream_begin(stream, &w.frame, &w.conversion, &w.result.image, &error);
  if (status != VISTREL_OK) return status;
  const size_t stride = strideOf(w.frame);
  const size_t rowBytes = w.result.rowSamples * w.result.planes * sizeof(float);
  const auto band = static_cast<uint32_t>(std::clamp<size_t>(kBandBytes / rowBytes, 1, 64));
  uint32_t done = 0, pushed = 0;
  while (status == VISTREL_OK && done < w.result.rows) {
    const uint32_t rows = std::min(band, w.frame.height - pushed);
    const size_t offset = pushed * stride;
    uint32_t final = done;
    status = vistrel_stream_push(stream, static_cast<const char*>(w.frame.samples) + offset,
                                 w.frame.size - offset, rows, &final, &error);
    widen(w.result, floats.bytes, floats.divisor, done, final);
    done = final;
    pushed += rows;
  }
  if (pushed < w.frame.height) vistrel_stream_abort(stream, nullptr);
  return status;
}

int32_t convertToFloats(const Work& w, const Floats& floats, vistrel_error& error) noexcept {
  if (takesPushedRows(w.conversion)) {
    auto own = w.stream ? vistrel::Result<Stream>(Stream()) : Stream::tryAcquire(VISTREL_NO_WAIT);
    if (own) return pushRows(w, floats, w.stream ? w.stream : own->handle(), error);
  }
  const int32_t status = convertWhole(w, error);
  if (status == VISTREL_OK) widen(w.result, floats.bytes, floats.divisor, 0, w.result.rows);
  return status;
}

// The column that pads the luma of I420 if the width is odd.
void fillPadding(const Request& r, const vistrel_layout& layout, const Result& result) {
  if (r.conversion.format != VISTREL_I420 || layout.width % 2 == 0) return;
  auto* const pixels = static_cast<uint8_t*>(result.image.pixels);
  for (uint32_t y = 0; y < layout.height; ++y) pixels[result.image.stride * y + layout.width] = 0;
}

vistrel_stream* streamOf(py::handle stream) {
  if (stream.is_none()) return nullptr;
  vistrel_stream* const handle = stream.cast<HeldStream&>().handle();
  if (!handle) reject(VISTREL_BAD_STREAM, "stream", "", "it is released");
  return handle;
}

py::object convert(const py::args& arguments) {
  Request request = requestOf(arguments);
  calibrate(request, arguments, request.conversion.black);
  return convertBy(request, arguments);
}

}  // namespace

py::object convertBy(Request& request, const py::args& arguments) {
  vistrel_conversion& conversion = request.conversion;
  const vistrel_frame& frame = request.input.frame;
  vistrel_layout layout;
  vistrel_error error;
  check(vistrel_get_layout(&frame, &conversion, &layout, &error), error);
  const Result result = resultOf(request, layout, arguments[kOut]);
  const BorrowedTeam team(request.threads);
  setTeam(conversion, team.get());
  const Work work{frame, conversion, result, streamOf(arguments[kStream])};
  int32_t status = VISTREL_OK;
  withoutLock([&] {
    status = request.floats ? convertToFloats(work, floatsOf(request, layout), error)
                            : convertWhole(work, error);
  });
  check(status, error);
  fillPadding(request, layout, result);
  return arguments[kOut].is_none() ? py::object(result.array) : py::object(arguments[kOut]);
}

void bindConvert(py::module_& module) { module.def("convert", &convert); }

}  // namespace vistrel::python
