// Rows of pixels from half rows. The second half of this file is compiled once for each level.
#ifndef VISTREL_EACH_LEVEL
#define VISTREL_BODY "tests/common/rows/pixel_kernels_test.cpp"
#include "common/rows/pixel_kernels.h"
#include "common/rows/half_rows.h"

namespace vistrel::core::test {

// The colours of a row, as they are stored.
template <class T>
struct PlainRows {
  const T *own[2], *green[2], *opposite[2];
};

}  // namespace vistrel::core::test

#include "common/simd/each_level.h"
#include "tests/arena.h"
#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(PixelRow);

// A row of pixels, and half rows that the kernel makes it of: the first row of a mosaic. On the way
// the kernel adds the column parity of the green sites to green.
template <class T>
class Row {
 public:
  Row(size_t columns, unsigned phase)
      : columns_(columns), phase_(phase),
        pixels_(noise<T>(3 * columns, 200, static_cast<unsigned>(columns))),
        halves_(3, 2, columns, memory_) {
    const unsigned greenParity = phase == 1 || phase == 2;  // BGGR, RGGB
    for (size_t x = 0; x < columns; ++x) {
      const T* p = &pixels_[3 * x];
      for (unsigned c = 0; c < 3; ++c) halves_.half(c, x % 2)[x / 2] = p[c];
      halves_.half(1, x % 2)[x / 2] = static_cast<T>(p[1] - greenParity);
    }
  }

  void run(RowSink<T>& sink) const {
    const auto kernels = VISTREL_BY_LEVEL(kPlainKernels<T>);
    const auto of = [&](unsigned c) { return std::array{halves_.half(c, 0), halves_.half(c, 1)}; };
    const bool isRedRow = phase_ % 2 == 0;  // GRBG, RGGB
    const auto own = of(isRedRow ? 2 : 0), green = of(1), opposite = of(isRedRow ? 0 : 2);
    kernels->ofRow(Mosaic::ofPhase(phase_), 0)(
        {{own[0], own[1]}, {green[0], green[1]}, {opposite[0], opposite[1]}}, columns_, sink);
  }
  const std::vector<T>& pixels() const { return pixels_; }

 private:
  size_t columns_;
  unsigned phase_;
  std::vector<T> pixels_;
  Memory memory_;
  HalfRowRing<T> halves_;  // blue, green, red
};

template <class T>
void expectPixels(size_t columns) {
  for (unsigned phase = 0; phase < 4; ++phase) {
    const Row<T> row(columns, phase);
    Canvas<T> alone(3 * columns), both(3 * columns), copy(3 * columns);
    RowSink<T> sink(alone.data()), sinkOfBoth(both.data(), copy.data());
    row.run(sink);
    row.run(sinkOfBoth);
    EXPECT_EQ(alone.samples(), row.pixels()) << columns;
    EXPECT_EQ(both.samples(), row.pixels()) << columns;
    EXPECT_EQ(copy.samples(), row.pixels()) << columns;
  }
}

TEST_P(PixelRow, HasEveryColumnAndNoMore) {
  for (uint32_t columns : kWidths) {
    expectPixels<uint8_t>(columns);
    expectPixels<uint16_t>(columns);
  }
}

// Counts pixels that are said to be stored, and are.
struct Listener final : ChunkListener {
  const uint8_t *pixels, *expected;
  size_t end = 0;

  void written(int, size_t from, size_t to) override {
    EXPECT_EQ(from, end);
    EXPECT_TRUE(std::equal(pixels + 3 * from, pixels + 3 * to, expected + 3 * from));
    end = to;
  }
};

TEST_P(PixelRow, ReportsPixelsOnceTheyAreStored) {
  const Row<uint8_t> row(2000, 0);
  Canvas<uint8_t> canvas(6000);
  Listener listener;
  listener.pixels = canvas.data();
  listener.expected = row.pixels().data();
  RowSink<uint8_t> sink(canvas.data());
  sink.listen(&listener, 0);
  row.run(sink);
  EXPECT_GT(listener.end, 2000 - 2 * ChunkListener::kChunk);
  sink.finish(2000);
  EXPECT_EQ(listener.end, 2000u);
}

}  // namespace
}  // namespace vistrel::core::test

#else
#include "common/rows/pixel_kernels-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

struct FillPlain {
  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const test::PlainRows<T>& rows, size_t k) {
    Halves<T> halves;
    for (int p = 0; p < 2; ++p) {
      halves.own[p] = load(rows.own[p] + k);
      halves.green[p] = load(rows.green[p] + k) + T{greenParity};
      halves.opposite[p] = load(rows.opposite[p] + k);
    }
    return halves;
  }
};

template <class T>
constexpr PixelKernels<T, test::PlainRows<T>> kPlainKernels =
    kPixelKernels<T, test::PlainRows<T>, FillPlain>;

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET
#endif
