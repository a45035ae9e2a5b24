// Rejected calls, and the Python exceptions that they become.
#pragma once

#include <pybind11/pybind11.h>

#include <cstdint>
#include <string>

#include "apps/error.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::python {

namespace py = pybind11;

// A parameter: the name that errors give it, and their status code.
struct Parameter {
  const char* name;
  int32_t status;
};

// A value of the right type that is not allowed. The texts are those of vistrel_error.
[[noreturn]] void reject(int32_t status, const std::string& argument, const std::string& value,
                         const std::string& reason);

// A value of the wrong type: of this one.
[[noreturn]] void rejectType(int32_t status, const std::string& argument, const std::string& type,
                             const std::string& reason);

// A value, part of an error's text, that a parser of the program doesn't take.
[[noreturn]] void rejectParsed(const Parameter& parameter, const std::string& text);

// Raises what a function of the host layer reports.
void check(int32_t status, const vistrel_error& error);

// Runs a parser of the program, whose errors are "OPTION VALUE: REASON", with or without a value.
template <class Parser>
auto parsed(const Parameter& parameter, Parser&& parser) {
  try {
    return parser();
  } catch (const app::ProgramError& error) {
    rejectParsed(parameter, error.what());
  }
}

// The text of a part of the program, which names options: arguments here, such as from_name for
// "--from-name".
std::string withArguments(const std::string& text);

// Makes exceptions of whatever is thrown in this module. None may reach pybind11's translators,
// which are those of another module.
void bindRejection();

}  // namespace vistrel::python
