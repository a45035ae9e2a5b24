#include "python/extension/arguments.h"

#include <cstring>

namespace vistrel::python {

const char* stringOf(py::handle value, const Parameter& parameter) {
  if (!PyUnicode_Check(value.ptr()))
    rejectType(parameter.status, parameter.name, typeOf(value), "a str");
  const char* const text = PyUnicode_AsUTF8(value.ptr());
  if (!text) throw py::error_already_set();
  return text;
}

std::string typeOf(py::handle value) { return Py_TYPE(value.ptr())->tp_name; }

std::string textOf(py::handle value) { return py::repr(value).cast<std::string>(); }

uint32_t integerOf(py::handle value, const Parameter& parameter) {
  if (!PyIndex_Check(value.ptr()))
    rejectType(parameter.status, parameter.name, typeOf(value), "an integer");
  const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
  if (!index) throw py::error_already_set();
  int overflow = 0;
  const long long integer = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
  if (overflow || integer < 0 || integer > 0xFFFFFFFF)
    reject(parameter.status, parameter.name, textOf(index), "0 to 4294967295");
  return static_cast<uint32_t>(integer);
}

uint32_t codeOf(py::handle value, const Parameter& parameter, Parse parse) {
  uint32_t code = 0;
  vistrel_error error;
  check(parse(stringOf(value, parameter), &code, &error), error);
  return code;
}

uint32_t choiceOf(py::handle value, const Parameter& parameter, const char* const* choices) {
  const char* const text = stringOf(value, parameter);
  for (uint32_t i = 0; choices[i]; ++i)
    if (!std::strcmp(text, choices[i])) return i;
  std::string all = choices[0];
  while (*++choices) all += std::string(", ") + *choices;
  reject(parameter.status, parameter.name, text, all);
}

void integersOf(py::handle value, const Parameter& parameter, uint32_t* integers, size_t count) {
  const std::string allowed = std::to_string(count) + " integers";
  if (!PySequence_Check(value.ptr()) || PyUnicode_Check(value.ptr()))
    rejectType(parameter.status, parameter.name, typeOf(value), allowed);
  const auto items = py::reinterpret_borrow<py::sequence>(value);
  if (items.size() != count) reject(parameter.status, parameter.name, textOf(value), allowed);
  for (size_t i = 0; i < count; ++i) integers[i] = integerOf(items[i], parameter);
}

}  // namespace vistrel::python
