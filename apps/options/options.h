// Checks of option values.
#pragma once

#include <CLI/CLI.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace vistrel::app {

// Accepts integers from `min` to `max`.
CLI::Option* between(CLI::Option* option, uint32_t min, uint32_t max);

// Accepts integers from 0.
CLI::Option* fromZero(CLI::Option* option);

// Accepts one of `words`.
CLI::Option* oneOf(CLI::Option* option, const std::vector<std::string>& words);

// Accepts the name of a file, which may be missing.
CLI::Option* aFile(CLI::Option* option);

// A word as a shell takes it.
std::string quoted(const std::string& word);

}  // namespace vistrel::app
