// One number per experiment: a hash of the results of a fixed set of cases.
#pragma once

#include <string>

#include "tests/check/sandbox.h"

namespace vistrel::core::check {

// Experiments whose results depend on the processor or on the C library have none.
inline bool hasChecksum(const Experiment& experiment) { return experiment.portable; }
uint64_t checksum(const Catalogue& all, const Experiment& experiment, Side side);

// Prints the reference's numbers, in the form of the golden file.
void printChecksums(const Catalogue& all);

// Compares one side (the product: at its current level) with the numbers of a file. Prints what
// differs; returns true if nothing does.
bool compareChecksums(const Catalogue& all, Side side, const std::string& path);

}  // namespace vistrel::core::check
