#include "gstreamer/settings.h"

#include "apps/look/look.h"
#include "apps/options/geometry.h"

namespace vistrel::gstreamer {
namespace {

void append(std::string& text, const char* part, const std::string& value) {
  if (value.empty()) return;
  if (!text.empty()) text += ",";
  text.append(part).append(value);
}

}  // namespace

app::LookChoice lookChoiceOf(const Settings& settings) {
  std::string text = settings.look;
  append(text, "black=", settings.black);
  append(text, "white=", settings.white ? std::to_string(settings.white) : "");
  append(text, "gains=", settings.gains);
  append(text, "matrix=", settings.matrix);
  return text.empty() ? app::LookChoice{} : app::parseLook(text);
}

Shape shapeOf(const Settings& settings) {
  Shape shape;
  if (!settings.region.empty()) shape.region = app::parseRegion("region", settings.region);
  shape.binning = settings.binning;
  return shape;
}

std::vector<std::string> unusedSettings(const Settings& s, const RawFormat& format) {
  std::vector<std::string> unused;
  const auto add = [&](bool isUnused, const char* property, const std::string& reason) {
    if (isUnused) unused.push_back(std::string(property) + " has no effect " + reason);
  };
  const bool isMono = format.phase == VISTREL_MONO, hasTable = !s.table.empty();
  add(s.window && (s.curve || hasTable), "window", hasTable ? "beside table" : "beside curve");
  add(s.curve && hasTable, "curve", "beside table");
  add(s.threshold && s.method != VISTREL_EDGE, "threshold", "without method=edge");
  add(s.bits && !(isMono && format.bits == 16), "bits",
      "on " + format.name + ", which has " + std::to_string(format.bits));
  if (s.look.empty()) {
    add(s.exposure > 0, "exposure", "without look");
    add(!s.matrix.empty(), "matrix", "without look");
  } else {
    add(s.exposure > 0 && lookChoiceOf(s).known.exposure, "the exposure of look",
        "beside the property exposure");
  }
  add(s.balance && isMono, "awb", "on mono frames");
  add(s.balance && !isMono && !s.gains.empty(), "gains", "beside awb");
  return unused;
}

void apply(const Settings& settings, vistrel_conversion& conversion) {
  conversion.algorithm = settings.method;
  conversion.threshold = settings.method == VISTREL_EDGE ? settings.threshold : 0;
  conversion.edges = settings.edges;
  conversion.binning = settings.binning;
  conversion.bin_mode = settings.binMode;
  conversion.excess = settings.excess;
  conversion.reduction = settings.curve ? settings.curve + 1 : settings.window;
  if (settings.table.empty()) return;
  conversion.reduction = VISTREL_TABLE;
  conversion.table = settings.table.data();
  conversion.table_entries = static_cast<uint32_t>(settings.table.size());
}

}  // namespace vistrel::gstreamer
