// One number a plan: the answers to a fixed set of cases, folded.
#pragma once

#include <string>

#include "tests/check/stage.h"

namespace vistrel::core::check {

// Plans whose answers depend on the processor or the C library have none.
inline bool hasChecksum(const Plan& plan) { return plan.portable; }
uint64_t checksum(const Catalogue& all, const Plan& plan, Side side);

// Prints the reference's numbers, in the form of the golden file.
void printChecksums(const Catalogue& all);

// Compares one side, the product at its current level, with the numbers of a file. Prints what
// differs; true when nothing does.
bool compareChecksums(const Catalogue& all, Side side, const std::string& path);

}  // namespace vistrel::core::check
