// Pixel formats, by their names in --format.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vistrel::app {

struct OutputFormat {
  const char* name;
  uint32_t code;                       // VISTREL_...: in a headerless raw file
  bool allBits;                        // keeps all bits of a sample
  std::optional<uint32_t> inPictures;  // the code that picture writers expect; they have no planes
};

// `name` must be one of outputFormatNames().
const OutputFormat& outputFormat(const std::string& name);
std::vector<std::string> outputFormatNames();

enum class OutputKind { picture, raw, y4m };

// What the name of an output asks for.
OutputKind outputKind(const std::filesystem::path& output);

}  // namespace vistrel::app
