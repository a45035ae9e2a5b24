#include "python/extension/frame.h"

#include <bit>

#include "python/extension/arguments.h"

namespace vistrel::python {
namespace {

constexpr bool kLittle = std::endian::native == std::endian::little;
constexpr char kForeign = kLittle ? '>' : '<';

bool isExactArray(py::handle object) {
  return reinterpret_cast<PyObject*>(Py_TYPE(object.ptr())) ==
         reinterpret_cast<PyObject*>(py::detail::npy_api::get().PyArray_Type_);
}

void checkMask(py::handle object, const char* name) {
  if (py::isinstance(object, py::module_::import("numpy.ma").attr("MaskedArray")))
    rejectType(VISTREL_BAD_BITS, name, typeOf(object), "fill the masked samples first");
}

constexpr const char* kAllowed = "an array, or an object with a buffer";

// `source` offers the memory of `object`; it is null after an exception.
py::array asArray(py::handle source, py::handle object, const char* name) {
  const Parameter parameter{name, VISTREL_NULL_POINTER};
  if (!source) rejectRaised(object, parameter, kAllowed);
  const py::object convert = py::module_::import("numpy").attr("asarray");
  PyObject* const array = PyObject_CallFunctionObjArgs(convert.ptr(), source.ptr(), nullptr);
  if (!array) rejectRaised(object, parameter, kAllowed);
  return py::reinterpret_steal<py::array>(array);
}

// Classes have the attribute too, but not its value.
bool hasInterface(py::handle object) {
  return py::isinstance<py::dict>(py::getattr(object, "__array_interface__", py::none()));
}

void checkSamples(const py::array& array) {
  const py::dtype dtype = array.dtype();
  if (dtype.kind() != 'u' || dtype.itemsize() > 2)
    rejectType(VISTREL_BAD_BITS, "raw.dtype", nameOf(dtype), "uint8 or uint16");
}

// Of finished pixels, the third dimension is their samples.
void checkShape(const py::array& array, uint32_t phase) {
  const bool pixels = phase == VISTREL_BGR;
  const bool fits = pixels ? array.ndim() == 3 && array.shape(2) == 3 : array.ndim() == 2;
  if (!fits)
    reject(VISTREL_BAD_SIZE, "raw.shape", textOf(array.attr("shape")),
           pixels ? "(height, width, 3)" : "(height, width)");
  for (int i = 0; i < 2; ++i)
    if (array.shape(i) > 0xFFFFFFFF)
      reject(VISTREL_TOO_LARGE, "raw.shape", textOf(array.attr("shape")), "at most 4294967295");
}

py::ssize_t pixelBytes(const py::array& array) {
  return array.itemsize() * (array.ndim() == 3 ? 3 : 1);
}

// The host layer wants the samples of a row side by side. It rejects frames without any.
void checkStrides(const py::array& array) {
  if (!array.size()) return;
  const bool packed = (array.shape(1) <= 1 || array.strides(1) == pixelBytes(array)) &&
                      (array.ndim() == 2 || array.strides(2) == array.itemsize());
  if (!packed || (array.shape(0) > 1 && array.strides(0) == 0))
    reject(VISTREL_BAD_STRIDE, "raw.strides", textOf(array.attr("strides")),
           "rows must follow each other, and the samples of a row must lie side by side: see "
           "numpy.ascontiguousarray");
}

// Frames have their first row first, and finished pixels are in this machine's byte order.
bool needsCopy(const py::array& array) {
  return (array.shape(0) > 1 && array.strides(0) < 0) || (array.ndim() == 3 && !isNative(array));
}

py::array copyOf(const py::array& array) {
  return py::module_::import("numpy").attr("ascontiguousarray")(
      array, array.dtype().attr("newbyteorder")("="));
}

uint32_t bitsOf(py::handle bits, const py::array& array) {
  if (bits.is_none()) return static_cast<uint32_t>(8 * array.itemsize());
  return integerOf(bits, {"bits", VISTREL_BAD_BITS});
}

vistrel_frame describe(const py::array& array) {
  vistrel_frame frame{};
  frame.samples = array.data();
  frame.height = static_cast<uint32_t>(array.shape(0));
  frame.width = static_cast<uint32_t>(array.shape(1));
  frame.bytes_per_sample = static_cast<uint32_t>(array.itemsize());
  const auto rowBytes = static_cast<size_t>(array.shape(1) * pixelBytes(array));
  if (frame.height > 1) frame.stride = static_cast<size_t>(array.strides(0));
  if (frame.height) frame.size = (frame.height - size_t{1}) * frame.stride + rowBytes;
  if (!isNative(array)) frame.packing = kLittle ? VISTREL_PACKING_BIG : VISTREL_PACKING_LITTLE;
  return frame;
}

}  // namespace

std::string nameOf(const py::dtype& dtype) { return py::str(py::object(dtype)); }

bool isNative(const py::array& array) { return array.dtype().byteorder() != kForeign; }

py::array arrayOf(py::handle object, const char* name) {
  if (isExactArray(object)) return py::reinterpret_borrow<py::array>(object);
  if (py::isinstance<py::array>(object)) {
    checkMask(object, name);
    return asArray(object, object, name);
  }
  if (PyObject_CheckBuffer(object.ptr())) {
    // NumPy takes bytes for text, but not their view.
    const auto view = py::reinterpret_steal<py::object>(PyMemoryView_FromObject(object.ptr()));
    return asArray(view, object, name);
  }
  if (hasInterface(object)) return asArray(object, object, name);
  rejectType(VISTREL_NULL_POINTER, name, typeOf(object), kAllowed);
}

ArrayFrame frameOf(py::handle raw, py::handle phase, py::handle bits, py::handle align) {
  static constexpr const char* kAlignments[] = {"low", "high", nullptr};
  const uint32_t code = codeOf(phase, {"phase", VISTREL_BAD_PHASE}, vistrel_parse_phase);
  py::array array = arrayOf(raw, "raw");
  checkSamples(array);
  checkShape(array, code);
  checkStrides(array);
  if (needsCopy(array)) array = copyOf(array);
  vistrel_frame frame = describe(array);
  frame.phase = code;
  frame.bits = bitsOf(bits, array);
  frame.alignment = choiceOf(align, {"align", VISTREL_BAD_ALIGNMENT}, kAlignments);
  return {frame, std::move(array)};
}

void makeNative(ArrayFrame& input) {
  if (!input.frame.packing) return;
  const vistrel_frame before = input.frame;
  input.samples = copyOf(input.samples);
  input.frame = describe(input.samples);
  input.frame.phase = before.phase;
  input.frame.bits = before.bits;
  input.frame.alignment = before.alignment;
}

}  // namespace vistrel::python
