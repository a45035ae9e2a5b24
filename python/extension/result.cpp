#include "python/extension/result.h"

#include <vector>

#include "python/extension/arguments.h"
#include "python/extension/memory.h"

namespace vistrel::python {
namespace {

using Shape = std::vector<py::ssize_t>;

bool sharesChroma(uint32_t format) { return format == VISTREL_NV12 || format == VISTREL_I420; }

// NV12 and I420 are one plane of bytes, with the rows of chroma below those of luma.
Shape shapeOf(const Request& request, const vistrel_layout& l) {
  const auto height = py::ssize_t{l.height}, width = py::ssize_t{l.width};
  if (sharesChroma(request.conversion.format)) return {height + (height + 1) / 2, (width + 1) & ~1};
  if (request.planes) return {l.channels, height, width};
  if (l.channels == 1) return {height, width};
  return {height, width, l.channels};
}

py::dtype dtypeOf(const Request& request) {
  if (request.floats) return py::dtype::of<float>();
  return request.sampleBytes > 1 ? py::dtype::of<uint16_t>() : py::dtype::of<uint8_t>();
}

std::string textOf(const Shape& shape) {
  std::string text;
  for (const py::ssize_t size : shape) text += (text.empty() ? "(" : ", ") + std::to_string(size);
  return text + ")";
}

void checkOut(const py::array& out, const Shape& shape, const py::dtype& dtype) {
  if (!out.dtype().equal(dtype))
    rejectType(VISTREL_BAD_FORMAT, "out.dtype", nameOf(out.dtype()), nameOf(dtype));
  const Shape given(out.shape(), out.shape() + out.ndim());
  if (given != shape) reject(VISTREL_BAD_SIZE, "out.shape", textOf(given), textOf(shape));
  if (!out.writeable()) reject(VISTREL_OVERLAP, "out", "", "it is read-only");
}

[[noreturn]] void rejectStrides(const py::array& out, const std::string& reason) {
  reject(VISTREL_BAD_STRIDE, "out.strides",
         textOf(Shape(out.strides(), out.strides() + out.ndim())), reason);
}

// Within a row, samples lie side by side; planes follow each other without a gap, and two rows of
// the chroma of I420 fill one of luma.
void checkStrides(const py::array& out, const Request& request) {
  const int row = request.planes ? 1 : 0;
  py::ssize_t packed = out.itemsize();
  bool fits = out.shape(row) == 1 || out.strides(row) != 0;
  for (py::ssize_t i = out.ndim() - 1; i > row; packed *= out.shape(i--))
    fits = fits && (out.shape(i) == 1 || out.strides(i) == packed);
  if (request.planes && out.shape(0) > 1)
    fits = fits && out.strides(0) == out.strides(1) * out.shape(1);
  if (!fits) rejectStrides(out, "only rows may have gaps between them");
  if (request.conversion.format == VISTREL_I420 && out.strides(0) != packed)
    rejectStrides(out, "the rows of i420 have no gaps between them");
}

// Where the host layer stores integers: all rows of all planes have one distance.
void setImage(Result& r, const Request& request) {
  const int row = request.planes ? 1 : 0;
  const py::ssize_t stride = r.array.strides(row);
  const auto rowBytes = r.rowSamples * static_cast<size_t>(r.array.itemsize());
  const size_t distance = static_cast<size_t>(stride < 0 ? -stride : stride);
  const size_t stored = r.rowSamples * request.sampleBytes;
  r.image = {};
  r.image.pixels = static_cast<char*>(r.array.mutable_data()) + (rowBytes - stored);
  r.image.size = distance * (r.planes * r.rows - 1) + stored;
  r.image.stride = stride;
}

}  // namespace

vistrel::python::Result resultOf(const Request& request, const vistrel_layout& layout,
                                 py::handle out) {
  const Shape shape = shapeOf(request, layout);
  const py::dtype dtype = dtypeOf(request);
  const bool isNew = out.is_none();
  Result r{isNew ? newArray(dtype, shape) : arrayOf(out, "out"), {}, 1, 0, 0};
  if (!isNew) {
    checkOut(r.array, shape, dtype);
    checkStrides(r.array, request);
  }
  const size_t first = request.planes ? 1 : 0;
  if (request.planes) r.planes = static_cast<size_t>(shape[0]);
  r.rows = static_cast<size_t>(shape[first]);
  r.rowSamples = static_cast<size_t>(shape[first + 1]);
  if (!request.planes && shape.size() == 3) r.rowSamples *= static_cast<size_t>(shape[2]);
  setImage(r, request);
  return r;
}

}  // namespace vistrel::python
