// Python's arguments as the host layer takes them.
#pragma once

#include "python/extension/rejection.h"

namespace vistrel::python {

// A parameter: the name that errors give it, and their status code.
struct Parameter {
  const char* name;
  int32_t status;
};

// The text of a str, which lives as long as that.
const char* stringOf(py::handle value, const Parameter& parameter);

// An object that is one by Python's rules, such as numpy.int64.
uint32_t integerOf(py::handle value, const Parameter& parameter);

// The code of a str in any case, which `parse` finds.
using Parse = int32_t (*)(const char* name, uint32_t* code, vistrel_error* error);
uint32_t codeOf(py::handle value, const Parameter& parameter, Parse parse);

// The index of a str in a list that ends in a null pointer.
uint32_t choiceOf(py::handle value, const Parameter& parameter, const char* const* choices);

// The elements of a sequence of `count` integers.
void integersOf(py::handle value, const Parameter& parameter, uint32_t* integers, size_t count);

// The name of its type.
std::string typeOf(py::handle value);

// What repr() says.
std::string textOf(py::handle value);

}  // namespace vistrel::python
