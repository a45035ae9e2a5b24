#include "apps/look/camera_look.h"

#include <algorithm>

#include "apps/input/camera_colour.h"

namespace vistrel::app {
namespace {

BlackLevels rounded(const std::array<double, 4>& black) {
  BlackLevels levels;
  for (size_t i = 0; i < 4; ++i) levels[i] = static_cast<uint32_t>(std::max(black[i], 0.0) + 0.5);
  return levels;
}

// What users give goes before what files say.
template <class T>
void prefer(std::optional<T>& given, const std::optional<T>& otherwise) {
  if (!given) given = otherwise;
}

}  // namespace

LookChoice withCamera(LookChoice choice, const CameraMetadata& camera, bool isMono) {
  KnownLook& known = choice.known;
  if (camera.black) prefer(known.black, std::optional(rounded(*camera.black)));
  if (camera.white) {
    const double white = std::clamp(*camera.white, 1.0, double{kMaxLevel});
    prefer(known.white, std::optional(static_cast<uint32_t>(white)));
  }
  if (isMono) return choice;
  const CameraColour colour = cameraColour(camera);
  prefer(known.gains, colour.gains);
  prefer(known.matrix, colour.matrix);
  return choice;
}

}  // namespace vistrel::app
