// Tone curves in files: text or PGM.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace vistrel::app {

// Reads 1024, 2048 or 4096 entries of 0..255. A text file holds numbers separated by white space;
// a comment runs from # to the end of the line. Throws ProgramError: input/output, or usage for an
// invalid table.
std::vector<uint16_t> readCurve(const std::filesystem::path& path);

}  // namespace vistrel::app
