// Tone curves of the user's: text or PGM.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace vistrel::app {

// 1024, 2048 or 4096 entries of 0..255. A text has numbers between white space, and comments from
// # to the end of a line. Throws Failure: input/output, or usage for what is no such table.
std::vector<uint16_t> readCurve(const std::filesystem::path& path);

}  // namespace vistrel::app
