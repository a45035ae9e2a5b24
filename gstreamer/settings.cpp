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
