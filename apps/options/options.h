// What values an option accepts.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace vistrel::app {

// A whole number from `least` to `most`.
CLI::Option* between(CLI::Option* option, int least, int most);

// A whole number from 0.
CLI::Option* fromZero(CLI::Option* option);

// One of `words`.
CLI::Option* oneOf(CLI::Option* option, const std::vector<std::string>& words);

}  // namespace vistrel::app
