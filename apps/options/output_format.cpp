#include "apps/options/output_format.h"

#include <algorithm>
#include <iterator>

#include "apps/failure.h"
#include "host/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr OutputFormat kFormats[] = {
    {"gray8", IMG_FMT_GRAY8, false, true},  {"gray16", IMG_FMT_GRAY16, true, true},
    {"bgr24", IMG_FMT_BGR24, false, true},  {"rgb24", VISTREL_RGB24, false, false},
    {"bgra", VISTREL_BGRA32, false, false}, {"rgba", VISTREL_RGBA32, false, false},
    {"argb", IMG_FMT_ARGB32, false, false}, {"bgr48", IMG_FMT_BGR48, true, true},
    {"rgb48", VISTREL_RGB48, true, false},
};

bool isDump(const std::filesystem::path& output) {
  const auto extension = output.extension();
  return extension == ".raw" || extension == ".bin" || output == "raw:-" || output == "bin:-";
}

}  // namespace

const OutputFormat& outputFormat(const std::string& name) {
  return *std::find_if(std::begin(kFormats), std::end(kFormats),
                       [&name](const OutputFormat& format) { return name == format.name; });
}

std::vector<std::string> outputFormatNames() {
  std::vector<std::string> names;
  for (const OutputFormat& format : kFormats) names.push_back(format.name);
  return names;
}

void checkFits(const OutputFormat& format, const std::filesystem::path& output) {
  if (!format.picture && !isDump(output))
    fail(kUsage,
         "--format {}: for .raw and .bin alone; pictures take gray8, gray16, bgr24 and bgr48",
         format.name);
}

}  // namespace vistrel::app
