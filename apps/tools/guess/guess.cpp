#include "apps/tools/guess/guess.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "apps/names/pixel_format.h"
#include "apps/tools/guess/arrangement.h"
#include "apps/tools/guess/row_grids.h"
#include "apps/tools/guess/sample_kind.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr size_t kMinBytes = 256, kGuesses = 8;

// Noise seldom reaches a recurrence of 6; in a small file, rows may not exceed it either.
constexpr double kSureRecurrence = 6.5;

// Bits of a byte; random ones have almost 8.
constexpr double kMostEntropy = 7.8;

// How much it counts that a code is longer than the shortest, by its share.
constexpr double kOddsOfRate = 200;

bool isSame(const Arrangement& a, const Arrangement& b) {
  return a.layout.packing.code == b.layout.packing.code &&
         a.layout.packing.bits == b.layout.packing.bits && a.layout.width == b.layout.width &&
         a.height == b.height && a.layout.skip == b.layout.skip &&
         a.layout.stride == b.layout.stride;
}

// Of layouts that hold the same samples: most programs write the low byte first, and 12 bits in
// GigE's packing.
double oddsOf(const Packing& p) {
  if (p.code == VISTREL_PACKING_BIG) return -2;
  return p.code == VISTREL_PACKING_GIGE && p.bits == 10 ? -1 : 0;
}

// The bits of a byte that nothing predicts.
double entropyOf(const std::vector<uint8_t>& bytes) {
  std::array<double, 256> counts{};
  for (const uint8_t byte : bytes) ++counts[byte];
  const auto all = static_cast<double>(bytes.size());
  double entropy = 0;
  for (const double count : counts)
    if (count > 0) entropy -= count / all * std::log2(count / all);
  return entropy;
}

// Whether all bytes are those of a text: samples between these would have the others too.
bool isText(const std::vector<uint8_t>& bytes) {
  constexpr uint8_t kTab = 9, kLineFeed = 10, kReturn = 13, kSpace = 32, kDelete = 127;
  bool hasLines = false;
  for (const uint8_t byte : bytes) {
    hasLines |= byte == kLineFeed;
    const bool isControl = byte < kSpace || byte == kDelete;
    if (isControl && byte != kTab && byte != kLineFeed && byte != kReturn) return false;
  }
  return hasLines;
}

// Whether the file is a whole number of frames of that size and nothing else.
bool fits(const Layout& l, const Size& size, size_t bytes) {
  const size_t frame = l.stride * size.height;
  return l.skip == 0 && frame > 0 && bytes % frame == 0;
}

// Only grids whose rows recur, and whose samples predict each other. A frame may be all noise, as
// that of a dark sky; its size then says enough, unless the bytes are random altogether.
std::vector<RowGrid> convincingGrids(const std::vector<uint8_t>& bytes,
                                     const std::optional<Size>& size) {
  const std::vector<RowGrid> grids = rowGrids(bytes, size ? size->width : 0);
  const double entropy = entropyOf(bytes);
  std::vector<RowGrid> convincing, fitting;
  for (const RowGrid& g : grids) {
    const double share = g.rate / entropy;
    if (g.recurrence >= kSureRecurrence ? share <= 0.97 : g.recurrence >= 3 && share <= 0.75)
      convincing.push_back(g);
    else if (size && entropy > 0 && entropy < kMostEntropy && fits(g.layout, *size, bytes.size()))
      fitting.push_back(g);
  }
  return convincing.empty() ? fitting : convincing;
}

std::vector<Arrangement> likelyArrangements(const std::vector<uint8_t>& bytes,
                                            const std::optional<Size>& size) {
  const std::vector<RowGrid> grids = convincingGrids(bytes, size);
  std::vector<Arrangement> all;
  for (const RowGrid& grid : grids)
    for (Arrangement& a : arrangementsOf(bytes, grid, size)) {
      a.odds += oddsOf(grid.layout.packing) - kOddsOfRate * (grid.rate / grids[0].rate - 1);
      all.push_back(a);
    }
  std::ranges::stable_sort(all, [](const auto& a, const auto& b) { return a.odds > b.odds; });
  std::vector<Arrangement> best;
  for (const Arrangement& a : all)
    if (best.size() < kGuesses &&
        std::ranges::none_of(best, [&a](const auto& b) { return isSame(a, b); }))
      best.push_back(a);
  return best;
}

Guess guessOf(const std::vector<uint8_t>& bytes, const Arrangement& a) {
  const Layout& l = a.layout;
  Guess g{};
  g.width = l.width;
  g.height = a.height;
  g.packing = l.packing.code;
  g.continuous = l.stride == 0;
  g.stride = l.stride == rowBytesOf(l.packing, l.width) ? 0 : l.stride;
  g.skip = l.skip;
  g.frames = a.frames;
  g.trailing = a.trailing;
  const SampleKind kind = sampleKindOf(bytes, l, a.height);
  g.bits = kind.bits;
  g.highBits = kind.highBits;
  g.phase = kind.phase;
  g.otherPhase = kind.otherPhase;
  return g;
}

// Some samples measured had no bits in their lower bytes, but others have: the bytes of these
// samples come in the other order.
double oddsAgainst(const Guess& g, double unit) {
  return unit >= 256 && !(g.highBits && g.bits == 8) ? 8 : 0;
}

}  // namespace

std::vector<Guess> guessFormat(const std::vector<uint8_t>& bytes, const std::optional<Size>& size) {
  if (bytes.size() < kMinBytes || isText(bytes)) return {};
  std::vector<Arrangement> best = likelyArrangements(bytes, size);
  std::vector<Guess> guesses;
  double sum = 0;
  for (const Arrangement& a : best) {
    guesses.push_back(guessOf(bytes, a));
    guesses.back().score = std::exp2(a.odds - oddsAgainst(guesses.back(), a.unit) - best[0].odds);
    sum += guesses.back().score;
  }
  std::ranges::stable_sort(guesses,
                           [](const Guess& a, const Guess& b) { return a.score > b.score; });
  for (Guess& g : guesses) g.score /= sum;
  return guesses;
}

}  // namespace vistrel::app
