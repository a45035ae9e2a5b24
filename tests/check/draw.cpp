#include "tests/check/draw.h"

#include <algorithm>

namespace vistrel::core::check {
namespace {

constexpr uint32_t kLargeEvery = 16, kLargeAt = 15;
constexpr uint32_t kHugeEvery = 1024, kHugeAt = 95;         // one of the large ones
constexpr uint32_t kBenchWidth = 1200, kBenchHeight = 900;  // divisible by every factor

}  // namespace

Draw::Draw(uint64_t seed, uint32_t number) : Random(mix(seed) + number), number_(number) {}

Draw Draw::forBench(uint64_t seed, uint32_t number) {
  Draw draw(seed, number);
  draw.bench_ = true;
  return draw;
}

bool Draw::isHuge() const { return number_ % kHugeEvery == kHugeAt; }
bool Draw::isLarge() const { return number_ % kLargeEvery == kLargeAt; }

uint32_t Draw::largeSide(uint32_t factor) {
  const uint32_t full =
      isHuge() ? kHuge - below(200) : 1 + below(std::min(kLarge, 1u << (4 + below(7))));
  return std::max(1u, full / factor);
}

void Draw::size(Call& call, bool emptyAllowed) {
  if (bench_) {
    call.binning = number_ % 4;
    call.roiWidth = kBenchWidth / call.factor();
    call.roiHeight = kBenchHeight / call.factor();
    return;
  }
  if (isLarge()) {
    call.binning = isHuge() && oneIn(2) ? 0 : below(4);
    call.roiWidth = largeSide(call.factor());
    call.roiHeight = largeSide(call.factor());
    return;
  }
  const uint32_t small = number_ - number_ / kLargeEvery;
  const uint32_t index = small / 2 * 769 % (kSmall * kSmall);  // a permutation: 769 is prime
  call.binning = small % 2 == 0 ? 0 : oddly(16) ? pick({4, 5}) : 1 + below(3);
  call.roiWidth = 1 + index % kSmall;
  call.roiHeight = 1 + index / kSmall;
  if (emptyAllowed && oddly(100)) (oneIn(2) ? call.roiWidth : call.roiHeight) = 0;
}

void Draw::memory(Call& call, bool wide) {
  call.pattern =
      bench_ ? static_cast<uint32_t>(Pattern::smooth) : below(kPatterns - (wide ? 0 : 1));
  call.seed = word();
  call.place = below(8);
  if (oneIn(2)) call.place |= kWorkExact;
  if (oneIn(2)) call.place |= kNoTable;
}

uint32_t Draw::sourceBits() {
  if (plain()) return 12;
  if (oddly(24)) return below(41);
  return oneIn(3) ? 8 + below(9) : pick({10, 12});
}

uint32_t Draw::lutMode() {
  if (plain()) return 0;
  if (oddly(24)) return pick({8, 9, 11, 12, 255, 0x80000000});
  return pick({0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 10, 10});
}

uint32_t Draw::sampleBits(uint32_t srcBits) {
  if (plain()) return 8;
  if (oddly(24)) return below(41);
  return oneIn(2) ? 8 : pick({9, 10, 12, 16, srcBits, srcBits});
}

}  // namespace vistrel::core::check
