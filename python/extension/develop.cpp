#include "python/extension/develop.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "apps/look/decide_calibrated.h"
#include "apps/look/finished_look.h"
#include "python/extension/arguments.h"
#include "python/extension/convert.h"
#include "python/extension/look_parts.h"
#include "python/extension/unlocked.h"

namespace vistrel::python {
namespace {

constexpr Parameter kLookParameter{"look", VISTREL_BAD_FINISH};

app::LookChoice choiceIn(py::handle look) {
  const char* const text = stringOf(look, kLookParameter);
  return parsed(kLookParameter, [&] { return app::parseLook(text); });
}

// Rejects what the host layer would.
void checkRequest(const Request& request) {
  vistrel_layout layout;
  vistrel_error error;
  check(vistrel_get_layout(&request.input.frame, &request.conversion, &layout, &error), error);
}

// The look decides the rest of the conversion. The samples can be read only after a check.
app::Look lookOf(Request& request, const py::args& arguments) {
  const vistrel_frame& frame = request.input.frame;
  if (frame.phase == VISTREL_BGR)
    reject(VISTREL_BAD_PHASE, "phase", "bgr", "finished pixels have no look: a mosaic or mono");
  const app::LookChoice choice = choiceIn(arguments[kLook]);
  request.conversion.finish = &app::kPlainFinish;  // to check what does not depend on the look
  uint32_t black[4] = {};
  if (choice.known.black) std::copy(choice.known.black->begin(), choice.known.black->end(), black);
  calibrate(request, arguments, black);
  checkRequest(request);
  makeNative(request.input);
  const vistrel_conversion& c = request.conversion;
  app::Look decided;
  withoutLockOrThrow([&] {
    decided = c.calibration
                  ? app::decideCalibrated(frame, choice, *c.calibration, c.excess, c.region)
                  : app::decideLook(frame, choice, c.region);
  });
  parsed(kLookParameter, [&] { app::checkBlack(choice.known, decided, frame); });
  return decided;
}

using FinishedLook = std::shared_ptr<const app::FinishedLook>;

// The last one is kept: a transfer curve takes longer than a small frame. Python's lock guards it.
FinishedLook finishedLook(const app::Look& look) {
  static auto* const last = new std::pair<app::Look, FinishedLook>;
  if (last->second && last->first == look) return last->second;
  FinishedLook finished;
  withoutLockOrThrow([&] { finished = std::make_shared<const app::FinishedLook>(look); });
  *last = {look, finished};
  return finished;
}

py::object develop(const py::args& arguments) {
  Request request = requestOf(arguments);
  const FinishedLook look = finishedLook(lookOf(request, arguments));
  look->apply(request.input.frame, request.conversion);
  return convertBy(request, arguments);
}

py::dict decide(const py::args& arguments) {
  Request request = requestOf(arguments);
  const app::Look look = lookOf(request, arguments);
  finishedLook(look)->apply(request.input.frame, request.conversion);
  checkRequest(request);
  return partsOf(look, request.input.frame.phase == VISTREL_MONO);
}

}  // namespace

void bindDevelop(py::module_& module) {
  module.def("develop", &develop);
  module.def("decide", &decide);
  module.def("check_look", [](py::handle look) { choiceIn(look); });
}

}  // namespace vistrel::python
