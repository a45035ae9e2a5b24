#include "apps/names/output_names.h"

namespace vistrel::app {

const std::vector<OutputNames>& outputNames() {
  static const std::vector<OutputNames> names{
      {"VISTREL_MONO8", 1, "gray", "GREY", "GRAY8", "gray", "CV_8UC1"},
      {"VISTREL_MONO16", 2, "gray", "Y16", "GRAY16_LE", "gray16le", "CV_16UC1"},
      {"VISTREL_BGR24", 3, "blue green red", "BGR3", "BGR", "bgr24", "CV_8UC3"},
      {"VISTREL_ARGB32", 4, "alpha red green blue", "BA24", "ARGB", "argb", "CV_8UC4"},
      {"VISTREL_GRAY8", 1, "gray", "GREY", "GRAY8", "gray", "CV_8UC1"},
      {"VISTREL_GRAY16", 2, "gray", "Y16", "GRAY16_LE", "gray16le", "CV_16UC1"},
      {"VISTREL_BGR48", 6, "blue green red", nullptr, nullptr, "bgr48le", "CV_16UC3"},
      {"VISTREL_RGB24", 3, "red green blue", "RGB3", "RGB", "rgb24", "CV_8UC3"},
      {"VISTREL_BGRA32", 4, "blue green red alpha", "AR24", "BGRA", "bgra", "CV_8UC4"},
      {"VISTREL_RGBA32", 4, "red green blue alpha", "AB24", "RGBA", "rgba", "CV_8UC4"},
      {"VISTREL_RGB48", 6, "red green blue", nullptr, nullptr, "rgb48le", "CV_16UC3"},
  };
  return names;
}

}  // namespace vistrel::app
