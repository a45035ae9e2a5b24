// Demosaic algorithms, by their names in the host layer's table.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <string_view>
#include <vector>

#include "vistrel/vistrel_host.h"

namespace vistrel::app {

struct AlgorithmChoice {
  const vistrel_algorithm* row;
  uint32_t threshold;  // of the edge algorithm; 0 for the others
};

// What pictures for the eye are made with.
constexpr const char* kDevelopAlgorithm = "directional";

// The algorithm at that index of the table, with its default threshold.
AlgorithmChoice algorithmAt(size_t index);

// Parses NAME, or NAME:THRESHOLD if the algorithm has one. Throws ProgramError (usage).
AlgorithmChoice parseAlgorithm(std::string_view option, std::string_view text);

// Of all, as "bilinear".
std::vector<std::string> algorithmNames();

// "edge:20"; the name alone if the algorithm has no threshold.
std::string labelOf(const AlgorithmChoice& algorithm);

// -a, which may be repeated.
void addAlgorithmsOption(CLI::App& command, std::vector<AlgorithmChoice>& algorithms);

// The given algorithms, or all if none is given.
std::vector<AlgorithmChoice> orAll(const std::vector<AlgorithmChoice>& given);

}  // namespace vistrel::app
