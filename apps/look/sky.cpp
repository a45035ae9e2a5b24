#include "apps/look/sky.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <span>

#include "apps/look/brightness.h"
#include "apps/look/neutral.h"
#include "apps/look/tone.h"

namespace vistrel::app {
namespace {

constexpr double kSkyLuminance = 0.125;  // of the encoded picture
constexpr double kLinearSky = 0.1;       // in linear light
constexpr double kStars = 0.9999;        // of the samples stay below white
constexpr double kLeastDeviation = 0.5;  // what whole numbers show
constexpr double kSkySteps = 8;          // of the curve below the sky's level, to look it up
constexpr uint32_t kLargestStretch = 1'000'000'000;
constexpr double kDepth = 4;  // black is at most that many deviations below the sky

// Median and deviation, from the median of absolute deviations. noise: the deviation, also where
// many samples are clipped at 0; 0 if all of them are.
struct Peak {
  double median, deviation, noise;
};

// In the normal distribution, a part of kTail lies more than a deviation below the median, and as
// much above it.
constexpr double kTail = 0.1587;

Peak peakOf(const Histogram& samples) {
  const uint32_t median = quantile(samples, 0.5);
  Histogram distances(samples.size());
  for (uint32_t value = 0; value < samples.size(); ++value)
    distances[value > median ? value - median : median - value] += samples[value];
  const double deviation = std::max(1.4826 * quantile(distances, 0.5), kLeastDeviation);
  const bool isClipped = quantile(samples, kTail) == 0;
  const double above = static_cast<double>(quantile(samples, 1 - kTail) - median);
  const double noise = isClipped && above > 0 ? std::max(above, deviation)
                       : isClipped            ? 0
                                              : deviation;
  return {static_cast<double>(median), deviation, noise};
}

// The normal distribution has 90 % within 1.64 deviations. Dark samples may be clipped at 0.
bool isNormal(const Histogram& samples, const Peak& peak) {
  const auto distance = [&](double part) {
    return (quantile(samples, part) - peak.median) / peak.deviation;
  };
  const double asymmetry = distance(0.75) + distance(0.25);
  return std::max(asymmetry, -asymmetry) <= 0.5 && distance(0.95) <= 2.5 &&
         (distance(0.05) <= -1 || quantile(samples, 0.05) == 0);
}

bool hasStars(const Histogram& samples, const Peak& peak) {
  return quantile(samples, 0.95) <= peak.median + 5 * peak.deviation &&
         quantile(samples, kStars) >= peak.median + 20 * peak.deviation;
}

// The part of the deviation that is noise, from the median difference of neighbours. Neighbours
// that hardly differ tell nothing.
double noiseOf(const Histogram& differences, const Peak& peak) {
  const double noise = 1.4826 / 1.4142 * quantile(differences, 0.5);
  return peak.deviation <= kLeastDeviation ? 1 : noise / peak.deviation;
}

// Samples that are those of a sky if enough of their deviation is noise.
struct Candidate {
  Peak peak;
  double leastNoise;
};

std::optional<Candidate> candidateOf(const Histogram& samples) {
  const double fullScale = static_cast<double>(samples.size() - 1);
  const Peak peak = peakOf(samples);
  if (peak.median <= fullScale / 3 && peak.deviation <= fullScale / 40 && hasStars(samples, peak))
    return Candidate{peak, 0.4};
  if (peak.median <= fullScale / 16 && peak.deviation <= fullScale / 100 && isNormal(samples, peak))
    return Candidate{peak, 0.7};
  return {};
}

// Red, green and blue of the sky; a mono frame has the same three times.
std::array<Peak, 3> skyOf(const vistrel_frame& frame, const std::array<Histogram, 4>& places) {
  std::array<Histogram, 3> colours;
  colours.fill(Histogram(places[0].size()));
  const auto placeColours = coloursOf(frame.phase);
  for (size_t place = 0; place < 4; ++place)
    for (size_t colour = 0; colour < 3; ++colour)
      if (frame.phase == VISTREL_MONO || placeColours[place] == colour)
        std::transform(places[place].begin(), places[place].end(), colours[colour].begin(),
                       colours[colour].begin(), std::plus());
  return {peakOf(colours[0]), peakOf(colours[1]), peakOf(colours[2])};
}

// From the light of stars and bright nebulae without that of the sky.
Gains gainsOfStars(std::span<const Block> blocks, const std::array<Peak, 3>& sky, uint32_t white) {
  std::vector<Block> stars;
  for (Block block : blocks) {
    bool isStar = !block.clipped;
    for (size_t i = 0; i < 3; ++i) {
      block.colour[i] -= static_cast<float>(sky[i].median / white);
      isStar &= double{block.colour[i]} * white > 10 * sky[i].deviation;
    }
    if (isStar) stars.push_back(block);
  }
  return gainsOf(stars, 1.0 / white);
}

// The same distance below the sky in all colours after the gains, so that the sky is neutral.
BlackLevels blackBelow(const std::array<Peak, 3>& sky, const Look& look, uint32_t phase) {
  double distance = 1e9;
  for (size_t i = 0; i < 3; ++i)
    distance =
        std::min(distance, std::min(kDepth * sky[i].deviation, sky[i].median) * look.gains[i]);
  BlackLevels black;
  const auto colours = coloursOf(phase);
  for (size_t place = 0; place < 4; ++place) {
    const size_t colour = colours[place];
    const double level = sky[colour].median - distance / look.gains[colour];
    black[place] = static_cast<uint32_t>(std::clamp(level + 0.5, 0.0, look.white - 1.0));
  }
  return black;
}

// One deviation of the noise, in the colour that has least.
double noiseLevel(const std::array<Peak, 3>& sky, const Look& look) {
  double least = 1e9;
  for (size_t i = 0; i < 3; ++i) least = std::min(least, sky[i].noise * look.gains[i]);
  return least / kLookOne / look.white;
}

// The asinh that puts the sky's level, after exposure, at its luminance.
Transfer stretch(double sky) {
  if (sky == 0) return {Curve::kAsinh, kLargestStretch};  // all of them leave it at 0
  const auto points = static_cast<size_t>(kSkySteps / std::clamp(sky, kSkySteps / 65535, 1.0)) + 1;
  uint32_t low = 1000, high = kLargestStretch;
  while (high - low > 1000) {
    const uint32_t middle = low + (high - low) / 2;
    (CurveSketch({Curve::kAsinh, middle}, points).at(sky) >= kSkyLuminance ? high : low) = middle;
  }
  return {Curve::kAsinh, high / 1000 * 1000};
}

}  // namespace

bool isSky(const vistrel_frame& frame, const std::array<Histogram, 4>& places,
           const vistrel_region& region) {
  std::vector<Candidate> candidates;
  for (const Histogram& place : places) {
    const auto candidate = countOf(place) ? candidateOf(place) : std::nullopt;
    if (!candidate) return false;
    candidates.push_back(*candidate);
  }
  const auto differences = differencesOf(frame, region);
  for (size_t place = 0; place < 4; ++place)
    if (noiseOf(differences[place], candidates[place].peak) < candidates[place].leastNoise)
      return false;
  return true;
}

void decideSky(const vistrel_frame& frame, const std::array<Histogram, 4>& places,
               const KnownLook& known, const vistrel_region& region, Look& look) {
  const auto sky = skyOf(frame, places);
  if (known.gains)
    look.gains = *known.gains;
  else if (frame.phase != VISTREL_MONO)
    look.gains = gainsOfStars(blocksOf(frame, {}, look.white, region), sky, look.white);
  look.matrix = known.matrix.value_or(kIdentityMatrix);
  look.black = known.black ? *known.black : blackBelow(sky, look, frame.phase);
  const Brightness brightness(blocksOf(frame, look.black, look.white, region), look);
  // Stars are white, unless that would make the sky gray.
  const double stars = std::max(brightness.highlight(kStars), brightness.median() / kLinearSky);
  look.exposure = known.exposure.value_or(exposureOf(stars > 0 ? 1 / stars : 1));
  // A sky that is clipped at 0 has no level above its noise.
  const double level =
      std::max(brightness.median(), noiseLevel(sky, look)) * look.exposure / kLookOne;
  look.transfer = known.transfer ? *known.transfer : stretch(level);
}

}  // namespace vistrel::app
