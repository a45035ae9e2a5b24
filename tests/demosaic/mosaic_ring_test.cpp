// The mosaic of a frame as a ring of half rows: its smoothed green and its edges.
#include "demosaic/mosaic_ring.h"

#include <algorithm>

#include "demosaic/job.h"
#include "tests/arena.h"
#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(MosaicRingAt);

// A frame with samples beside it, and a ring of its rows.
template <class T>
class RingFrame {
 public:
  RingFrame(uint32_t w, uint32_t h, unsigned phase, unsigned top = 65535)
      : width(int(w)), height(int(h)), mosaic_(core::Mosaic::ofPhase(phase)),
        samples_(noise<T>(stride() * h, top, w)) {}

  size_t stride() const { return static_cast<size_t>(width) + 9; }
  T* row(int y) { return samples_.data() + static_cast<size_t>(y) * stride() + 4; }
  int sensed(int x, int y) const {
    return samples_[static_cast<size_t>(y) * stride() + static_cast<size_t>(x) + 4];
  }
  MosaicRing<T> ring(unsigned rows, DepthTracking depth = DepthTracking::off) {
    const CfaRect all{0, 0, width, height};
    const DemosaicJob<T> job{.source = source_,
                             .mosaic = mosaic_,
                             .columns = width,
                             .height = height,
                             .roi = all,
                             .rows = rowsOf(all),
                             .image = &nowhere_,
                             .bits = 8 * sizeof(T)};
    return {job, rows, memory_, depth};
  }

  // What the ring promises of column x and row y, which may lie two pixels outside.
  int expected(int x, int y) const {
    x = inside(x, width), y = inside(y, height);
    const bool isOuter = x == 0 || y == 0 || x == width - 1 || y == height - 1;
    if (isOuter || !mosaic_.isGreenAt(x, y)) return sensed(x, y);
    return (4 * sensed(x, y) + sensed(x - 1, y - 1) + sensed(x + 1, y - 1) + sensed(x - 1, y + 1) +
            sensed(x + 1, y + 1)) /
           8;
  }

  const int width, height;

 private:
  static int inside(int c, int size) { return c < 0 ? c + 2 : c >= size ? c - 2 : c; }

  core::Mosaic mosaic_;
  std::vector<T> samples_;
  PlainRows<T> source_{row(0), static_cast<ptrdiff_t>(stride()), height};
  PlainImage<T> nowhere_{nullptr, 0};
  Memory memory_;
};

template <class T>
void expectRow(const RingFrame<T>& frame, const MosaicRing<T>& ring, int y) {
  for (int x = -2; x < frame.width + 2; ++x) {
    const T* half = ring.half(y, unsigned(x & 1));
    ASSERT_EQ(half[(x - (x & 1)) / 2], frame.expected(x, y)) << x << ' ' << y;
  }
}

// All rows of the frame in the ring at once.
template <class T>
void expectWhole(uint32_t width, uint32_t height, unsigned phase) {
  RingFrame<T> frame(width, height, phase);
  MosaicRing<T> ring = frame.ring(height);
  for (int y = 0; y < frame.height; ++y) ring.load(y);
  for (int y = 0; y < frame.height; ++y) ring.smooth(y);
  for (int y = -2; y < frame.height + 2; ++y) expectRow(frame, ring, y);
}

TEST_P(MosaicRingAt, SmoothsGreenInsideAndContinuesOutside) {
  for (unsigned phase = 0; phase < 4; ++phase)
    for (uint32_t width : {2, 3, 4, 5, 16, 17, 31, 33, 64, 66, 127, 130, 257})
      for (uint32_t height : {2, 3, 8}) {
        expectWhole<uint8_t>(width, height, phase);
        expectWhole<uint16_t>(width, height, phase);
      }
}

TEST_P(MosaicRingAt, KeepsAsManyRowsAsItsStagesNeed) {
  for (unsigned rows : {2u, 3u, 5u}) {
    RingFrame<uint8_t> frame(70, 20, 2);
    MosaicRing<uint8_t> ring = frame.ring(rows);
    ring.load(0);
    for (int y = 0; y < frame.height; ++y) {
      if (y + 1 < frame.height) ring.load(y + 1);
      ring.smooth(y);
      for (int kept = std::max(0, y + 1 - int(rows)); kept <= y; ++kept)
        expectRow(frame, ring, kept);
    }
  }
}

TEST_P(MosaicRingAt, SmoothsSamplesOfAllSizesAndRoundsDown) {
  RingFrame<uint16_t> frame(64, 8, 0);
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < frame.width; ++x) frame.row(y)[x] = x % 7 == 0 ? 65534 : 65535;
  MosaicRing<uint16_t> ring = frame.ring(8);
  for (int y = 0; y < 8; ++y) ring.load(y);
  for (int y = 0; y < 8; ++y) ring.smooth(y);
  for (int y = 0; y < 8; ++y) expectRow(frame, ring, y);
}

// Vectors read on behind a half row, where sums of twelve-bit samples must stay in their lanes too.
TEST_P(MosaicRingAt, KeepsNoSampleOfAnOlderRowInItsSlack) {
  constexpr int kSlack = 64 / sizeof(uint16_t), kHeight = 8, kLastRow = kHeight - 1;
  for (unsigned phase = 0; phase < 4; ++phase)
    for (uint32_t width : {34u, 66u, 71u}) {
      RingFrame<uint16_t> frame(width, kHeight, phase, 4095);
      for (int y = 0; y < kHeight - 2; ++y) std::fill_n(frame.row(y), width, uint16_t{65535});
      MosaicRing<uint16_t> ring = frame.ring(3);
      ring.load(0);
      for (int y = 0; y < kHeight; ++y) {
        if (y < kLastRow) ring.load(y + 1);
        ring.smooth(y);
      }
      for (unsigned parity : {0u, 1u}) {
        const uint16_t* const half = ring.half(kLastRow, parity);
        const auto size = static_cast<ptrdiff_t>(ring.halfSize(parity));
        EXPECT_LE(*std::max_element(half, half + size + kSlack), 4095) << width << ' ' << phase;
      }
    }
}

TEST(MosaicRing, HasOneColumnMoreInTheEvenHalfOfAnOddWidth) {
  RingFrame<uint8_t> frame(35, 5, 0);
  const MosaicRing<uint8_t> ring = frame.ring(5);
  EXPECT_EQ(ring.columns(), 35u);
  EXPECT_EQ(ring.height(), 5);
  EXPECT_EQ(ring.halfSize(0), 18u);
  EXPECT_EQ(ring.halfSize(1), 17u);
  EXPECT_EQ(ring.colourSites(0), 17u);  // of GRBG: red in odd columns
  EXPECT_EQ(ring.colourSites(1), 18u);
}

TEST_P(MosaicRingAt, MakesWindowsOfItsHalves) {
  RingFrame<uint8_t> frame(20, 8, 1);
  MosaicRing<uint8_t> ring = frame.ring(8);
  const auto window = ring.window<2>(7);  // beyond the last row too
  for (int dy = -2; dy <= 2; ++dy)
    for (unsigned parity : {0u, 1u})
      EXPECT_EQ(window.half[dy + 2][parity], ring.half(7 + dy, parity));
}

TEST_P(MosaicRingAt, FindsTheLastRowOfMoreThanTwelveBits) {
  for (uint32_t width : {6u, 70u, 71u})
    for (uint32_t x = 0; x < width; ++x) {
      RingFrame<uint16_t> frame(width, 8, 0, 4095);
      frame.row(3)[x] = 4096;
      frame.row(5)[-1] = frame.row(5)[width] = 4096;  // beside the frame
      MosaicRing<uint16_t> ring = frame.ring(8, DepthTracking::on);
      for (int y = 0; y < 3; ++y) ring.load(y);
      EXPECT_TRUE(ring.depths().areTwelveBitsFrom(0));
      for (int y = 3; y < 8; ++y) ring.load(y);
      EXPECT_FALSE(ring.depths().areTwelveBitsFrom(2));
      EXPECT_FALSE(ring.depths().areTwelveBitsFrom(3));
      EXPECT_TRUE(ring.depths().areTwelveBitsFrom(4));
    }
}

TEST_P(MosaicRingAt, FindsNoDepthUnlessAsked) {
  RingFrame<uint16_t> frame(20, 4, 0);
  MosaicRing<uint16_t> ring = frame.ring(4);
  for (int y = 0; y < 4; ++y) ring.load(y);
  EXPECT_TRUE(ring.depths().areTwelveBitsFrom(0));
}

}  // namespace
}  // namespace vistrel::core::test
