#include "python/extension/arguments.h"

#include <cstring>

namespace vistrel::python {

const char* stringOf(py::handle value, const Parameter& parameter) {
  if (!PyUnicode_Check(value.ptr()))
    rejectType(parameter.status, parameter.name, typeOf(value), "a str");
  const char* const text = PyUnicode_AsUTF8(value.ptr());
  if (!text) rejectRaised(value, parameter, "text without surrogates");
  return text;
}

std::string typeOf(py::handle value) { return Py_TYPE(value.ptr())->tp_name; }

std::string textOf(py::handle value) { return py::repr(value).cast<std::string>(); }

void rejectRaised(py::handle value, const Parameter& parameter, const std::string& allowed) {
  const py::error_already_set raised;
  if (raised.matches(PyExc_TypeError))
    rejectType(parameter.status, parameter.name, typeOf(value), allowed);
  if (raised.matches(PyExc_ValueError) || raised.matches(PyExc_OverflowError))
    reject(parameter.status, parameter.name, textOf(value), allowed);
  throw raised;
}

uint32_t integerOf(py::handle value, const Parameter& parameter, uint32_t most) {
  if (!PyIndex_Check(value.ptr()))
    rejectType(parameter.status, parameter.name, typeOf(value), "an integer");
  const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
  if (!index) rejectRaised(value, parameter, "an integer");
  int overflow = 0;
  const long long integer = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
  if (overflow || integer < 0 || integer > most)
    reject(parameter.status, parameter.name, textOf(index), "0 to " + std::to_string(most));
  return static_cast<uint32_t>(integer);
}

double numberOf(py::handle value, const Parameter& parameter) {
  const double number = PyFloat_AsDouble(value.ptr());
  if (number == -1 && PyErr_Occurred()) rejectRaised(value, parameter, "a number");
  return number;
}

bool flagOf(py::handle value, const Parameter& parameter) {
  const int truth = PyObject_IsTrue(value.ptr());
  if (truth < 0) rejectRaised(value, parameter, "True or False");
  return truth;
}

uint32_t codeOf(py::handle value, const Parameter& parameter, Parse parse) {
  uint32_t code = 0;
  vistrel_error error;
  const int32_t status = parse(stringOf(value, parameter), &code, &error);
  if (status != VISTREL_OK) reject(status, parameter.name, error.value, error.reason);
  return code;
}

const app::PixelFormat& pixelFormatOf(py::handle name) {
  const Parameter parameter{"pixel_format", VISTREL_BAD_FORMAT};
  const char* const text = stringOf(name, parameter);
  return *parsed(parameter, [&] { return &app::parsePixelFormat(parameter.name, text); });
}

uint32_t choiceOf(py::handle value, const Parameter& parameter, const char* const* choices) {
  const char* const text = stringOf(value, parameter);
  for (uint32_t i = 0; choices[i]; ++i)
    if (!std::strcmp(text, choices[i])) return i;
  std::string all = choices[0];
  while (*++choices) all += std::string(", ") + *choices;
  reject(parameter.status, parameter.name, text, all);
}

py::sequence sequenceOf(py::handle value, const Parameter& parameter, size_t count,
                        const std::string& allowed) {
  if (!PySequence_Check(value.ptr()) || PyUnicode_Check(value.ptr()))
    rejectType(parameter.status, parameter.name, typeOf(value), allowed);
  const py::ssize_t size = PySequence_Size(value.ptr());
  if (size < 0) rejectRaised(value, parameter, allowed);
  if (static_cast<size_t>(size) != count)
    reject(parameter.status, parameter.name, textOf(value), allowed);
  return py::reinterpret_borrow<py::sequence>(value);
}

void integersOf(py::handle value, const Parameter& parameter, uint32_t* integers, size_t count) {
  const auto items = sequenceOf(value, parameter, count, std::to_string(count) + " integers");
  for (size_t i = 0; i < count; ++i) integers[i] = integerOf(items[i], parameter);
}

}  // namespace vistrel::python
