#include "python/extension/stream.h"

namespace vistrel::python {

HeldStream::HeldStream() {
  vistrel_error error;
  check(vistrel_stream_acquire(VISTREL_NO_WAIT, &stream_, &error), error);
}

HeldStream::~HeldStream() {
  if (stream_) vistrel_stream_release(stream_, nullptr);
}

void HeldStream::release() {
  if (!stream_) return;
  vistrel_error error;
  check(vistrel_stream_release(stream_, &error), error);
  stream_ = nullptr;
}

void HeldStream::trim() {
  vistrel_error error;
  check(vistrel_stream_trim(stream_, &error), error);
}

void bindStream(py::module_& module) {
  py::class_<HeldStream>(module, "Stream")
      .def(py::init<>())
      .def("release", &HeldStream::release)
      .def("trim", &HeldStream::trim);
}

}  // namespace vistrel::python
