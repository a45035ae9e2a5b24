#include "apps/look/decide.h"

#include <algorithm>
#include <optional>

#include "apps/look/levels.h"
#include "apps/look/neutral.h"
#include "apps/look/sky.h"
#include "apps/look/tone.h"

namespace vistrel::app {
namespace {

// What the matrices of many cameras have in common: sensors' filters overlap, red's and blue's most
// of all with green's.
constexpr ColourMatrix kCommon = {5489, -1065, -328, -492, 5161, -573, -328, -983, 5407};

// Frames that need no gains come from pictures whose colours are right, or from telescopes, whose
// noise a matrix would raise.
ColourMatrix matrixFor(const Gains& gains) {
  const bool isBalanced =
      std::all_of(gains.begin(), gains.end(), [](uint32_t g) { return g < kLookOne * 5 / 4; });
  return isBalanced ? kIdentityMatrix : kCommon;
}

// The look that is known in all parts.
std::optional<Look> wholeLook(const KnownLook& k, bool isMono) {
  const bool hasColours = isMono || (k.gains && k.matrix && k.neutralHighlights);
  if (!k.black || !k.white || !k.exposure || !k.transfer || !hasColours) return {};
  return Look{*k.black,
              *k.white,
              k.gains.value_or(Gains{kLookOne, kLookOne, kLookOne}),
              k.matrix.value_or(kIdentityMatrix),
              *k.exposure,
              *k.transfer,
              k.neutralHighlights.value_or(true)};
}

}  // namespace

Look decideLook(const vistrel_frame& frame, const LookChoice& choice,
                const vistrel_region& region) {
  const bool isMono = frame.phase == VISTREL_MONO;
  const LookMode mode = choice.mode;
  KnownLook known = choice.known;
  if (isMono) known.gains.reset(), known.matrix.reset();
  if (const auto whole = wholeLook(known, isMono)) return *whole;
  const auto places = histogramsOf(frame, region);
  Look look;
  const uint32_t fullScale = fullScaleOf(sumOf(places), frame.bits);
  look.white = known.white ? *known.white : whiteOf(places, fullScale);
  look.neutralHighlights = known.neutralHighlights.value_or(true);
  if (mode == LookMode::kAstro || (mode == LookMode::kAuto && isSky(frame, places, region))) {
    decideSky(frame, places, known, region, look);
    return look;
  }
  const uint32_t black = std::min(blackOf(places, fullScale), look.white / 2);
  look.black = known.black.value_or(BlackLevels{black, black, black, black});
  const auto blocks = blocksOf(frame, look.black, look.white, region);
  if (known.gains)
    look.gains = *known.gains;
  else if (!isMono)
    look.gains = gainsOf(blocks, look.black, look.white);
  look.matrix = known.matrix.value_or(isMono ? kIdentityMatrix : matrixFor(look.gains));
  if (mode == LookMode::kLinear) {
    look.transfer = known.transfer.value_or(Transfer{Curve::kLinear, 0});
    look.exposure = known.exposure.value_or(kLookOne);
    return look;
  }
  decideTone(Brightness(blocks, look), known, mode == LookMode::kAuto, look);
  return look;
}

}  // namespace vistrel::app
