// What is wrong with a command line.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace vistrel::app {

// Explains an error of CLI11, which stopped the parsing of `program`, to the user.
std::string faultText(const CLI::App& program, const CLI::ParseError& error);

}  // namespace vistrel::app
