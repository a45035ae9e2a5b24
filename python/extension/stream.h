// A stream that Python holds.
#pragma once

#include "python/extension/rejection.h"

namespace vistrel::python {

class HeldStream {
 public:
  // Does not wait: the package waits, so that signals interrupt it.
  HeldStream();
  ~HeldStream();
  HeldStream(const HeldStream&) = delete;
  HeldStream& operator=(const HeldStream&) = delete;

  // Null after release(), which the host layer rejects.
  vistrel_stream* handle() const { return stream_; }
  void release();
  void trim();

 private:
  vistrel_stream* stream_ = nullptr;
};

void bindStream(py::module_& module);

}  // namespace vistrel::python
