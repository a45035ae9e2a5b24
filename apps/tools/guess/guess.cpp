#include "apps/tools/guess/guess.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>

#include "apps/names/pixel_format.h"
#include "apps/tools/guess/likeness.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app {
namespace {

// A packing, the bits that its samples have at most, and its groups.
struct Packing {
  uint32_t code, bits;
  SampleGroup group;
};

// Those that have names. 16-bit samples of fewer bits are found as those of 16.
std::vector<Packing> packings() {
  std::vector<Packing> all;
  for (const PixelFormat& f : pixelFormats())
    if (f.phase == VISTREL_MONO && (f.bits == 16 || !are16Bit(f.packing)))
      all.push_back({f.packing, f.bits, groupOf(f.packing, f.bits)});
  return all;
}

// Unpacks all complete groups as one row.
Samples unpack(const Packing& p, const std::vector<uint8_t>& bytes) {
  if (p.bits == 8) return {bytes.begin(), bytes.end()};
  const auto groups = static_cast<uint32_t>(bytes.size() / p.group.bytes);
  Samples samples(size_t{groups} * p.group.pixels);
  unpackInto(packedOf(bytes, groups * p.group.pixels, 1, p.code, p.bits),
             {reinterpret_cast<uint8_t*>(samples.data()), samples.size() * 2});
  return samples;
}

double shapeOf(double aspect) {
  for (const double usual : {4.0 / 3, 3.0 / 2, 16.0 / 9, 5.0 / 4, 1.0, 16.0 / 10})
    if (std::abs(aspect / usual - 1) < 0.02) return 1;
  return aspect > 0.7 && aspect < 2.4 ? 0.8 : 0.5;
}

// Finds the significant bits of 16-bit samples, and whether they are the highest ones.
void describe16Bit(const Samples& s, Guess& g) {
  uint32_t all = 0;
  for (const uint16_t sample : s) all |= sample;
  const auto used = static_cast<uint32_t>(std::bit_width(all));
  const auto zeros = static_cast<uint32_t>(std::countr_zero(all | 65536u));
  g.highBits = zeros >= 2 && used == 16;
  g.bits = std::clamp(g.highBits ? 16 - zeros : used + (used & 1), 8u, 16u);
}

// Green is on the diagonal whose two sites are more alike.
void describePhase(const Samples& s, Guess& g) {
  double falling = 0, rising = 0;  // sites (0, 0) and (1, 1); sites (0, 1) and (1, 0)
  double adjacent = 0, twice = 0;
  const uint32_t step = std::max(2u, g.height / 100 & ~1u);  // some rows suffice
  for (uint32_t y = 0; y + 2 < g.height; y += step)
    for (uint32_t x = 0; x + 2 < g.width; x += 2) {
      const size_t at = size_t{y} * g.width + x;
      falling += std::abs(s[at] - s[at + g.width + 1]);
      rising += std::abs(s[at + 1] - s[at + g.width]);
      adjacent += std::abs(s[at] - s[at + 1]);
      twice += std::abs(s[at] - s[at + 2]);
    }
  g.phase = VISTREL_MONO;
  if (adjacent >= twice) g.phase = rising <= falling ? VISTREL_RGGB : VISTREL_GRBG;
  g.otherPhase = vistrel_phase_at(g.phase, 1, 1);
}

struct Shape {
  Size size;
  double score;
};

// Sizes that yield this number of samples in whole groups: the known one, or all plausible ones.
std::vector<Size> sizesOf(size_t samples, const Packing& p, const std::optional<Size>& known) {
  std::vector<Size> sizes;
  const auto add = [&](size_t width, size_t height) {
    if (width * height == samples && width % p.group.pixels == 0)
      sizes.push_back({static_cast<uint32_t>(width), static_cast<uint32_t>(height)});
  };
  if (known) {
    add(known->width, known->height);
    return sizes;
  }
  for (size_t width = 16; width <= samples / 16 && width <= 32768; width += 2) {
    const size_t height = samples / width;
    const double aspect = static_cast<double>(width) / static_cast<double>(height);
    if (aspect >= 0.4 && aspect <= 3.5) add(width, height);
  }
  return sizes;
}

// The best of these sizes, by the similarity of pixels two rows apart.
std::vector<Shape> shapesOf(const Samples& s, const std::vector<Size>& sizes) {
  const double far = unlike(s);
  std::vector<Shape> shapes;
  for (const Size size : sizes) {
    const double likeness = std::max(0.0, 1 - difference(s, size_t{2} * size.width) / far);
    shapes.push_back({size, likeness * shapeOf(static_cast<double>(size.width) / size.height)});
  }
  std::sort(shapes.begin(), shapes.end(),
            [](const Shape& a, const Shape& b) { return a.score > b.score; });
  if (shapes.size() > 3) shapes.resize(3);
  return shapes;
}

// In groups of three bytes, GigE's 10-bit samples leave four bits of the middle byte at 0.
bool fitsThree(const Packing& p, const std::vector<uint8_t>& bytes) {
  uint32_t middle = 0;
  for (size_t i = 1; i < bytes.size(); i += 3) middle |= bytes[i];
  return (p.bits == 10) == ((middle & 0xCC) == 0);
}

struct RawBytes {
  const std::vector<uint8_t>& bytes;
  std::array<double, 8> evenness;  // by period: 2, 3, 5, 7
};

// How similar neighbours are, and how well the bytes match the groups.
double fitOf(const Packing& p, const RawBytes& raw, const Samples& s) {
  const auto& even = raw.evenness;
  const double bytes =
      p.group.bytes > 1 ? 1 - even[p.group.bytes] : std::min({even[2], even[3], even[5], even[7]});
  const double far = unlike(s);
  return far > kFlat ? bytes * std::max(0.0, 1 - difference(s, 2) / far) : 0;
}

void addGuesses(const Packing& p, const RawBytes& raw, const std::optional<Size>& known,
                std::vector<Guess>& guesses) {
  const auto& bytes = raw.bytes;
  if (bytes.size() % p.group.bytes || (p.group.bytes == 3 && !fitsThree(p, bytes))) return;
  const std::vector<Size> sizes = sizesOf(bytes.size() / p.group.bytes * p.group.pixels, p, known);
  if (sizes.empty()) return;
  const Samples s = unpack(p, bytes);
  const double fit = fitOf(p, raw, s);
  for (const Shape& shape : shapesOf(s, sizes)) {
    Guess g{};
    g.width = shape.size.width;
    g.height = shape.size.height;
    g.packing = p.code;
    g.bits = p.bits;
    g.score = std::cbrt(fit * shape.score);
    if (p.group.bytes == 2) describe16Bit(s, g);
    describePhase(s, g);
    guesses.push_back(g);
  }
}

}  // namespace

std::vector<Guess> guessFormat(const std::vector<uint8_t>& bytes, const std::optional<Size>& size) {
  constexpr size_t kMax = 8;
  RawBytes raw{bytes, {}};
  for (const uint32_t period : {2u, 3u, 5u, 7u}) raw.evenness[period] = evenness(bytes, period);
  std::vector<Guess> guesses;
  for (const Packing& p : packings()) addGuesses(p, raw, size, guesses);
  std::stable_sort(guesses.begin(), guesses.end(),
                   [](const Guess& a, const Guess& b) { return a.score > b.score; });
  if (guesses.size() > kMax) guesses.resize(kMax);
  return guesses;
}

}  // namespace vistrel::app
