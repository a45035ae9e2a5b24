#include "apps/options/output_format.h"

#include <algorithm>
#include <iterator>

#include "apps/names/output_type.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr OutputFormat kFormats[] = {
    {"gray8", VISTREL_GRAY8, false, VISTREL_GRAY8},
    {"gray16", VISTREL_GRAY16, true, VISTREL_GRAY16},
    {"bgr24", VISTREL_BGR24, false, VISTREL_RGB24},
    {"rgb24", VISTREL_RGB24, false, VISTREL_RGB24},
    {"bgra", VISTREL_BGRA32, false, VISTREL_RGBA32},
    {"rgba", VISTREL_RGBA32, false, VISTREL_RGBA32},
    {"argb", VISTREL_ARGB32, false, VISTREL_RGBA32},
    {"bgr48", VISTREL_BGR48, true, VISTREL_RGB48},
    {"rgb48", VISTREL_RGB48, true, VISTREL_RGB48},
    {"nv12", VISTREL_NV12, false, {}},
    {"i420", VISTREL_I420, false, {}},
    {"i444", VISTREL_I444, false, {}},
};

}  // namespace

OutputKind outputKind(const std::filesystem::path& output) {
  const std::string type = outputTypeName(output);
  if (type == "y4m") return OutputKind::y4m;
  return type == "raw" || type == "bin" ? OutputKind::raw : OutputKind::picture;
}

const OutputFormat& outputFormat(const std::string& name) {
  return *std::find_if(std::begin(kFormats), std::end(kFormats),
                       [&name](const OutputFormat& format) { return name == format.name; });
}

std::vector<std::string> outputFormatNames() {
  std::vector<std::string> names;
  for (const OutputFormat& format : kFormats) names.push_back(format.name);
  return names;
}

}  // namespace vistrel::app
