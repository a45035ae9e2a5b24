#include "apps/names/curve_names.h"

#include "apps/names/nearest_name.h"

namespace vistrel::app {
namespace {

constexpr CurveName kCurves[] = {
    {2, "light", "lifts dark tones to twice their value, and mid-tones a little"},
    {3, "lighter", "lifts dark tones as much, and mid-tones more"},
    {4, "lightest", "lifts the darkest tones to four times their value"},
    {5, "dark", "lowers dark tones to half their value, and mid-tones less"},
    {6, "contrast", "lowers dark tones and lifts light ones: an S"},
};

}  // namespace

std::span<const CurveName> curveNames() { return kCurves; }

std::string curveNameList(const std::string& between) {
  std::string list;
  for (const CurveName& curve : kCurves)
    list.append(list.empty() ? "" : between).append(curve.name);
  return list;
}

std::optional<uint32_t> findCurve(const std::string& text) {
  for (const CurveName& curve : kCurves)
    if (isSameName(text, curve.name) || text == std::to_string(curve.number)) return curve.number;
  return {};
}

}  // namespace vistrel::app
