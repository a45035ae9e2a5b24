#include "python/extension/guess.h"

#include "apps/names/pixel_format.h"
#include "apps/tools/guess/guess.h"
#include "python/extension/arguments.h"
#include "python/extension/buffer_view.h"
#include "python/extension/unlocked.h"

namespace vistrel::python {
namespace {

// Any name that unpack takes. Which bits of 16-bit samples are significant is no part of it.
std::string formatNameOf(const app::Guess& g) {
  const uint32_t bits = app::are16Bit(g.packing) ? 16 : g.bits;
  for (const app::PixelFormat& f : app::pixelFormats()) {
    if (f.packing != g.packing || f.bits != bits || f.phase != g.phase) continue;
    for (const std::string& name : {f.pfnc, f.v4l2Code, f.gstreamer})
      if (!name.empty()) return name;
  }
  return "";
}

py::tuple phasesOf(const app::Guess& g) {
  const py::str phase = vistrel_phase_name(g.phase);
  if (g.phase == g.otherPhase) return py::make_tuple(phase);
  return py::make_tuple(phase, vistrel_phase_name(g.otherPhase));
}

py::dict fieldsOf(const app::Guess& g) {
  py::dict fields;
  fields["score"] = g.score;
  fields["width"] = g.width;
  fields["height"] = g.height;
  fields["pixel_format"] = formatNameOf(g);
  fields["bits"] = g.bits;
  fields["align"] = g.highBits ? "high" : "low";
  fields["stride"] = g.stride ? py::object(py::int_(g.stride)) : py::object(py::none());
  fields["continuous"] = g.continuous;
  fields["skip"] = g.skip;
  fields["frames"] = g.frames;
  fields["trailing"] = g.trailing;
  fields["phases"] = phasesOf(g);
  return fields;
}

std::optional<app::Size> sizeOf(py::handle size) {
  if (size.is_none()) return {};
  uint32_t pixels[2];
  integersOf(size, {"size", VISTREL_BAD_SIZE}, pixels, 2);
  if (!pixels[0] || !pixels[1]) reject(VISTREL_BAD_SIZE, "size", textOf(size), "at least 1x1");
  return app::Size{pixels[0], pixels[1]};
}

py::list guess(py::handle buffer, py::handle size) {
  const std::optional<app::Size> known = sizeOf(size);
  const BufferView view(buffer);
  const auto* const first = static_cast<const uint8_t*>(view.get().buf);
  std::vector<app::Guess> guesses;
  withoutLockOrThrow([&] { guesses = app::guessFormat({first, first + view.get().len}, known); });
  py::list all;
  for (const app::Guess& g : guesses) all.append(fieldsOf(g));
  return all;
}

}  // namespace

void bindGuess(py::module_& module) { module.def("guess", &guess); }

}  // namespace vistrel::python
