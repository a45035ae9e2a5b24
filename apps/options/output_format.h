// Pixel formats by the names of --format.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vistrel::app {

struct OutputFormat {
  const char* name;
  uint32_t code;        // VISTREL_...: of bare samples
  bool allBits;         // keeps samples as long as they are
  uint32_t inPictures;  // the code whose order the writers of pictures take
};

// The name must be one of those below.
const OutputFormat& outputFormat(const std::string& name);
std::vector<std::string> outputFormatNames();

// Whether a file of that name has bare samples.
bool isDump(const std::filesystem::path& output);

}  // namespace vistrel::app
