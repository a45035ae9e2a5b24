#include "python/extension/look_parts.h"

namespace vistrel::python {
namespace {

template <class Numbers>
py::tuple tupleOf(const Numbers& numbers, double one) {
  py::tuple values(numbers.size());
  for (size_t i = 0; i < numbers.size(); ++i) values[i] = static_cast<double>(numbers[i]) / one;
  return values;
}

py::tuple levelsOf(const app::BlackLevels& black) {
  return py::make_tuple(black[0], black[1], black[2], black[3]);
}

}  // namespace

py::dict partsOf(const app::KnownLook& k) {
  py::dict parts;
  if (k.black) parts["black"] = levelsOf(*k.black);
  if (k.white) parts["white"] = *k.white;
  if (k.gains) parts["gains"] = tupleOf(*k.gains, app::kLookOne);
  if (k.matrix) parts["matrix"] = tupleOf(*k.matrix, app::kLookOne);
  if (k.exposure) parts["exposure"] = static_cast<double>(*k.exposure) / app::kLookOne;
  if (k.transfer) parts["curve"] = app::transferText(*k.transfer);
  if (k.neutralHighlights) parts["highlights"] = *k.neutralHighlights ? "neutral" : "clip";
  return parts;
}

py::dict partsOf(const app::Look& look, bool isMono) {
  app::KnownLook known{look.black, look.white, {}, {}, look.exposure, look.transfer, {}};
  if (isMono) return partsOf(known);
  known.gains = look.gains;
  known.matrix = look.matrix;
  known.neutralHighlights = look.neutralHighlights;
  return partsOf(known);
}

}  // namespace vistrel::python
