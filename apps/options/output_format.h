// Pixel formats by the names of --format.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vistrel::app {

struct OutputFormat {
  const char* name;
  uint32_t code;  // IMG_FMT_... or VISTREL_...
  bool allBits;   // keeps samples as long as they are
  bool picture;   // pictures of every kind may have it; dumps have any
};

// The name must be one of those below.
const OutputFormat& outputFormat(const std::string& name);
std::vector<std::string> outputFormatNames();

// Throws Failure (usage) for a format that a file of that name cannot have.
void checkFits(const OutputFormat& format, const std::filesystem::path& output);

}  // namespace vistrel::app
