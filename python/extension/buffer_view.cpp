#include "python/extension/buffer_view.h"

#include "python/extension/arguments.h"
#include "python/extension/frame.h"

namespace vistrel::python {

BufferView::BufferView(py::handle object) {
  const py::object array = PyObject_CheckBuffer(object.ptr())
                               ? py::reinterpret_borrow<py::object>(object)
                               : py::object(arrayOf(object, "buffer"));
  if (PyObject_GetBuffer(array.ptr(), &view_, PyBUF_SIMPLE) == 0) return;
  PyErr_Clear();
  reject(VISTREL_BAD_STRIDE, "buffer", typeOf(object),
         "its bytes must lie side by side: see numpy.ascontiguousarray");
}

}  // namespace vistrel::python
