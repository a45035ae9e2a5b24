#include "apps/tools/guess/guess_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "apps/names/pixel_format.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

// The options of the packing. Samples in high bits have no named format.
std::string packingOptionsOf(const Guess& g) {
  if (are16Bit(g.packing))
    return fmt::format("--bits {}{}{} --phase {}", std::max(g.bits, 9u),
                       g.packing == VISTREL_PACKING_BIG ? " --endian big" : "",
                       g.highBits ? " --align high" : "", vistrel_phase_name(g.phase));
  for (const PixelFormat& f : pixelFormats())
    if (f.packing == g.packing && f.bits == g.bits && f.phase == g.phase)
      return fmt::format("--pixfmt {}", f.pfnc.empty() ? f.v4l2Code : f.pfnc);
  return "";
}

}  // namespace

std::string optionsOf(const Guess& g) {
  std::string options = fmt::format("-s {}x{} {}", g.width, g.height, packingOptionsOf(g));
  if (g.stride) options += fmt::format(" --stride {}", g.stride);
  if (g.continuous) options += " --continuous";
  if (g.skip) options += fmt::format(" --skip {}", g.skip);
  return options + (g.frames > 1 ? " --frame 0" : "");
}

std::string describe(const Guess& g) {
  std::string text = fmt::format("{:.3f}  {}x{}, {}, {} bits{}, {}", g.score, g.width, g.height,
                                 packingNames(g.packing).name, g.bits,
                                 g.highBits ? " (the high ones)" : "", vistrel_phase_name(g.phase));
  if (g.phase != g.otherPhase) text += fmt::format(" or {}", vistrel_phase_name(g.otherPhase));
  if (g.stride) text += fmt::format(", {} bytes from row to row", g.stride);
  if (g.skip) text += fmt::format(", after {} bytes", g.skip);
  if (g.frames > 1) text += fmt::format(", {} frames", g.frames);
  if (g.trailing) text += fmt::format(", {} bytes left", g.trailing);
  return text;
}

}  // namespace vistrel::app
