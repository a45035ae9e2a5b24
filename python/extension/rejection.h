// Rejected calls, and the Python exceptions that they become.
#pragma once

#include <pybind11/pybind11.h>

#include <cstdint>
#include <string>

#include "vistrel/vistrel.hpp"

namespace vistrel::python {

namespace py = pybind11;

// A value of the right type that is not allowed. The texts are those of vistrel_error.
[[noreturn]] void reject(int32_t status, const std::string& argument, const std::string& value,
                         const std::string& reason);

// A value of the wrong type: of this one.
[[noreturn]] void rejectType(int32_t status, const std::string& argument, const std::string& type,
                             const std::string& reason);

// Raises what a function of the host layer reports.
void check(int32_t status, const vistrel_error& error);

// The text of a part of the program, which names options: arguments here, such as from_name for
// "--from-name".
std::string withArguments(const std::string& text);

// Makes exceptions of what is thrown here, and of what the program's parts throw.
void bindRejection();

}  // namespace vistrel::python
