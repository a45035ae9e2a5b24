#include "python/extension/unpack.h"

#include <pybind11/numpy.h>

#include "python/extension/arguments.h"
#include "python/extension/buffer_view.h"
#include "python/extension/memory.h"
#include "python/extension/unlocked.h"

namespace vistrel::python {
namespace {

vistrel_packed packedOf(const Py_buffer& bytes, const app::PixelFormat& format, py::handle width,
                        py::handle height, py::handle stride, py::handle continuous) {
  vistrel_packed p{};
  p.bytes = bytes.buf;
  p.size = static_cast<size_t>(bytes.len);
  p.width = integerOf(width, {"width", VISTREL_BAD_SIZE});
  p.height = integerOf(height, {"height", VISTREL_BAD_SIZE});
  if (!stride.is_none()) p.stride = integerOf(stride, {"stride", VISTREL_BAD_STRIDE});
  p.continuous = flagOf(continuous, {"continuous", VISTREL_BAD_CONTINUOUS});
  p.packing = format.packing;
  p.bits = format.bits;
  return p;
}

// The host layer rejects a short buffer first and no room for samples last, so a call without room
// checks the buffer before memory is taken for the samples.
void checkBytes(const vistrel_packed& packed) {
  vistrel_error error;
  uint8_t nothing;
  const int32_t status = vistrel_unpack(&packed, &nothing, 0, &error);
  if (std::string(error.argument) != "size") check(status, error);
}

py::array unpack(py::handle buffer, py::handle name, py::handle width, py::handle height,
                 py::handle stride, py::handle continuous) {
  const app::PixelFormat& format = pixelFormatOf(name);
  const BufferView view(buffer);
  const vistrel_packed packed = packedOf(view.get(), format, width, height, stride, continuous);
  vistrel_packed_layout layout;
  vistrel_error error;
  check(vistrel_get_packed_layout(&packed, &layout, &error), error);
  checkBytes(packed);
  const py::dtype dtype(layout.bytes_per_sample == 1 ? "u1" : "u2");
  py::array samples = newArray(dtype, {py::ssize_t{packed.height}, py::ssize_t{packed.width}});
  void* const to = samples.mutable_data();
  int32_t status = VISTREL_OK;
  withoutLock([&] { status = vistrel_unpack(&packed, to, layout.unpacked_bytes, &error); });
  check(status, error);
  return samples;
}

}  // namespace

void bindUnpack(py::module_& module) { module.def("unpack", &unpack); }

}  // namespace vistrel::python
