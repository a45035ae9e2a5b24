#include "apps/options/compression_options.h"

#include "apps/options/options.h"

namespace vistrel::app {

std::vector<std::string> CompressionOptions::unusedFor(std::string_view extension) const {
  const bool jpeg = extension == ".jpg" || extension == ".jpeg";
  const bool tiff = extension == ".tif" || extension == ".tiff";
  std::vector<std::string> unused;
  const bool applies = tiff || (extension == ".png" && compression != "lzw");
  if (!compression.empty() && !applies) unused.push_back("--compression " + compression);
  if (quality && !jpeg) unused.push_back("--quality " + std::to_string(*quality));
  if (!chroma.empty() && !jpeg) unused.push_back("--chroma " + chroma);
  return unused;
}

void addCompressionOptions(CLI::App& command, CompressionOptions& o) {
  oneOf(command.add_option("--compression", o.compression,
                           "Of a PNG (1) or TIFF (0): 0 none, 9 smallest; lzw in a TIFF"),
        {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "lzw"})
      ->type_name("0..9|lzw");
  between(command.add_option("--quality", o.quality, "Of a JPEG (90)"), 1, 100);
  oneOf(command.add_option("--chroma", o.chroma,
                           "Chroma samples of a JPEG: all, half or a quarter (444)"),
        {"444", "422", "420"});
}

}  // namespace vistrel::app
