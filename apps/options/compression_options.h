// How picture files are compressed: --compression, --quality, --chroma.
#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel::app {

struct CompressionOptions {
  std::string compression;  // 0 to 9, or lzw; empty if not given
  std::optional<int> quality;
  std::string chroma;  // 444, 422 or 420; empty if not given

  // What is given and has no effect on pictures of the type with this extension.
  std::vector<std::string> unusedFor(std::string_view extension) const;
};

void addCompressionOptions(CLI::App& command, CompressionOptions& options);

}  // namespace vistrel::app
