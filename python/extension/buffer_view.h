// The bytes of an object, in one piece.
#pragma once

#include "python/extension/rejection.h"

namespace vistrel::python {

class BufferView {
 public:
  explicit BufferView(py::handle object);
  ~BufferView() { PyBuffer_Release(&view_); }
  BufferView(const BufferView&) = delete;
  BufferView& operator=(const BufferView&) = delete;

  const Py_buffer& get() const { return view_; }

 private:
  Py_buffer view_{};
};

}  // namespace vistrel::python
