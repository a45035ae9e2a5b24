#include "apps/look/tone.h"

#include <algorithm>

namespace vistrel::app {
namespace {

// Mean luminance.
constexpr double kDark = 0.33, kBright = 0.6;

constexpr double kHighlights = 0.995;  // of the blocks stay below white
constexpr double kManyClipped = 0.001;
constexpr double kLargestExposure = double{kMaxExposure} / kLookOne;

// asinh:10 is close to sRGB; asinh:500 lifts shadows as far as their noise allows.
constexpr uint32_t kLeastAsinh = 10'000, kLargestAsinh = 500'000;

// The smallest value from `low` to `high`, in steps of 1 %, for which `isEnough`; `high` if none
// is.
template <class Predicate>
double smallest(double low, double high, Predicate isEnough) {
  while (high > 1.01 * low) {
    const double middle = (low + high) / 2;
    (isEnough(middle) ? high : low) = middle;
  }
  return high;
}

// Puts the highlights at white. What the sensor has clipped becomes white too.
double exposureOfHighlights(const Brightness& brightness) {
  const double highlight = brightness.highlight(kHighlights);
  double exposure = highlight > 0 ? std::min(1 / highlight, kLargestExposure) : 1;
  if (brightness.clipped() > kManyClipped)
    exposure = std::max(exposure, 1 / brightness.neutralClip());
  return exposure;
}

Transfer compressed(const Brightness& brightness, double exposure) {
  const double parameter = smallest(kLeastAsinh, kLargestAsinh, [&](double p) {
    return brightness.mean(exposure, {Curve::kAsinh, static_cast<uint32_t>(p)}) >= kDark;
  });
  return {Curve::kAsinh, static_cast<uint32_t>(parameter) / 1000 * 1000};
}

// Brighter than the highlights ask for, at the expense of some of them; or darker, unless it is the
// sensor's clipping that makes the picture bright.
double adjusted(const Brightness& brightness, double exposure, const Transfer& transfer) {
  const double mean = brightness.mean(exposure, transfer),
               bright = kBright + brightness.clipped() / 2;
  const auto reaches = [&](double luminance) {
    return [&, luminance](double e) { return brightness.mean(e, transfer) >= luminance; };
  };
  if (mean > bright) return smallest(exposure / 16, exposure, reaches(bright));
  if (mean < kDark) return smallest(exposure, 2.5 * exposure, reaches(kDark));
  return exposure;
}

}  // namespace

uint32_t exposureOf(double exposure) {
  return static_cast<uint32_t>(std::clamp(exposure, 1.0 / kLookOne, kLargestExposure) * kLookOne +
                               0.5);
}

void decideTone(const Brightness& brightness, const KnownLook& known, bool mayCompress,
                Look& look) {
  const double highlights = exposureOfHighlights(brightness);
  const double exposure =
      known.exposure ? static_cast<double>(*known.exposure) / kLookOne : highlights;
  look.transfer = known.transfer.value_or(Transfer{});
  if (!known.transfer && mayCompress && brightness.mean(exposure, look.transfer) < kDark)
    look.transfer = compressed(brightness, exposure);
  look.exposure =
      known.exposure ? *known.exposure : exposureOf(adjusted(brightness, exposure, look.transfer));
}

}  // namespace vistrel::app
