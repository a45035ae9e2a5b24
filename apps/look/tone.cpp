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

// gamma:2.2 is close to sRGB too.
constexpr uint32_t kLeastGamma = 1'200, kLargestGamma = 2'200;

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

// For `smallest`: exposures that make a picture so bright, or brighter.
auto reaches(const Brightness& brightness, const CurveSketch& curve, double luminance) {
  return [&brightness, &curve, luminance](double exposure) {
    return brightness.mean(exposure, curve) >= luminance;
  };
}

bool hasClipped(const Brightness& brightness) { return brightness.clipped() > kManyClipped; }

// Puts the highlights at white. What the sensor has clipped becomes white too; the rest is not
// raised beyond it if the picture is bright without.
double exposureOfHighlights(const Brightness& brightness, const Transfer& transfer) {
  const double highlight = brightness.highlight(kHighlights);
  const double exposure = highlight > 0 ? std::min(1 / highlight, kLargestExposure) : 1;
  if (!hasClipped(brightness)) return exposure;
  const double white = 1 / brightness.neutralClip();
  const CurveSketch curve(transfer);
  return smallest(white, std::max(white, exposure), reaches(brightness, curve, kBright));
}

// The smallest parameter that makes the picture so bright, in thousandths.
uint32_t parameterFor(const Brightness& brightness, double exposure, Curve curve, double luminance,
                      uint32_t least, uint32_t largest) {
  const auto isEnough = [&](double parameter) {
    const CurveSketch sketch({curve, static_cast<uint32_t>(parameter)});
    return brightness.mean(exposure, sketch) >= luminance;
  };
  return static_cast<uint32_t>(smallest(least, largest, isEnough));
}

// sRGB's, unless the picture would be dark, or bright with clipped highlights that must stay white.
Transfer transferFor(const Brightness& brightness, double exposure) {
  const double mean = brightness.mean(exposure, CurveSketch(Transfer{}));
  if (mean < kDark)
    return {Curve::kAsinh,
            parameterFor(brightness, exposure, Curve::kAsinh, kDark, kLeastAsinh, kLargestAsinh) /
                1000 * 1000};
  if (mean > kBright && hasClipped(brightness))
    return {Curve::kGamma,
            parameterFor(brightness, exposure, Curve::kGamma, kBright, kLeastGamma, kLargestGamma)};
  return {};
}

// Brighter than the highlights ask for, at the expense of some of them; or darker, unless it is the
// sensor's clipping that makes the picture bright.
double adjusted(const Brightness& brightness, double exposure, const Transfer& transfer) {
  const CurveSketch curve(transfer);
  const double mean = brightness.mean(exposure, curve), bright = kBright + brightness.clipped() / 2;
  if (mean > bright) return smallest(exposure / 16, exposure, reaches(brightness, curve, bright));
  if (mean < kDark) return smallest(exposure, 2.5 * exposure, reaches(brightness, curve, kDark));
  return exposure;
}

}  // namespace

uint32_t exposureOf(double exposure) {
  return static_cast<uint32_t>(std::clamp(exposure, 1.0 / kLookOne, kLargestExposure) * kLookOne +
                               0.5);
}

void decideTone(const Brightness& brightness, const KnownLook& known, bool mayCompress,
                Look& look) {
  look.transfer = known.transfer.value_or(Transfer{});
  const double exposure = known.exposure ? static_cast<double>(*known.exposure) / kLookOne
                                         : exposureOfHighlights(brightness, look.transfer);
  if (!known.transfer && mayCompress) look.transfer = transferFor(brightness, exposure);
  look.exposure =
      known.exposure ? *known.exposure : exposureOf(adjusted(brightness, exposure, look.transfer));
}

}  // namespace vistrel::app
