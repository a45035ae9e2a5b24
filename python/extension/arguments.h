// Python's arguments as the host layer takes them. What Python says about an argument of the wrong
// type or value becomes a rejection; other exceptions of objects pass through.
#pragma once

#include "apps/names/pixel_format.h"
#include "python/extension/rejection.h"

namespace vistrel::python {

// The text of a str, which lives as long as that.
const char* stringOf(py::handle value, const Parameter& parameter);

// An object that is one by Python's rules, such as numpy.int64.
uint32_t integerOf(py::handle value, const Parameter& parameter, uint32_t most = 0xFFFFFFFF);

double numberOf(py::handle value, const Parameter& parameter);

// Whether Python takes it for true.
bool flagOf(py::handle value, const Parameter& parameter);

// A sequence of `count` elements, which rejections call `allowed`.
py::sequence sequenceOf(py::handle value, const Parameter& parameter, size_t count,
                        const std::string& allowed);

// The code of a str in any case, which `parse` finds.
using Parse = int32_t (*)(const char* name, uint32_t* code, vistrel_error* error);
uint32_t codeOf(py::handle value, const Parameter& parameter, Parse parse);

// Any name that vistrel.unpack takes.
const app::PixelFormat& pixelFormatOf(py::handle name);

// The index of a str in a list that ends in a null pointer.
uint32_t choiceOf(py::handle value, const Parameter& parameter, const char* const* choices);

// The elements of a sequence of `count` integers.
void integersOf(py::handle value, const Parameter& parameter, uint32_t* integers, size_t count);

// The name of its type.
std::string typeOf(py::handle value);

// What repr() says.
std::string textOf(py::handle value);

// Rejects the value for what Python has raised.
[[noreturn]] void rejectRaised(py::handle value, const Parameter& parameter,
                               const std::string& allowed);

}  // namespace vistrel::python
