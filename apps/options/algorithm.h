// Demosaic algorithms by the names of the host layer's table.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <string_view>
#include <vector>

#include "vistrel/vistrel_host.h"

namespace vistrel::app {

struct Algorithm {
  const vistrel_algorithm* row;
  uint32_t threshold;  // 0 for all but the edge algorithm
};

// The table's algorithm of that index with its default threshold.
Algorithm algorithmAt(size_t index);

// NAME, or NAME:THRESHOLD where the algorithm has one. Throws Failure (usage).
Algorithm parseAlgorithm(std::string_view option, std::string_view text);

// "bilinear, near, laroche".
std::string algorithmNames();

// "edge:20"; the name alone where there is no threshold.
std::string labelOf(const Algorithm& algorithm);

// -a, to be given any number of times.
void addAlgorithmsOption(CLI::App& command, std::vector<Algorithm>& algorithms);

// Those that were given, or every one of the table.
std::vector<Algorithm> orAll(const std::vector<Algorithm>& given);

}  // namespace vistrel::app
