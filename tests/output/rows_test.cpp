// Every binning member at widths around the vector bodies' steps, compared with the plain
// arithmetic.
#include "tests/frames.h"
#include "tests/levels.h"
#include "tests/output/members.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Sizes);

constexpr uint32_t kHeight = 3;

// A reduction, and the largest sample of the source.
struct Reduce {
  uint32_t nSrcBits, nDstBits, nShiftAdjust, top;
};
const std::vector<Reduce> kBytes = {{8, 8, 0, 255}};
const std::vector<Reduce> k16To8 = {{8, 8, 0, 255},    {12, 8, 0, 4095},  {12, 8, 2, 4095},
                                    {16, 8, 0, 65535}, {12, 10, 0, 4095}, {10, 9, 0xFFFFFFFF, 1023},
                                    {8, 10, 0, 65535}, {8, 8, 0, 65535}};
const std::vector<Reduce> k16To16 = {{12, 12, 0, 4095},          {16, 16, 0, 65535},
                                     {12, 10, 0xFFFFFFFF, 4095}, {10, 10, 0, 65535},
                                     {10, 9, 1, 65535},          {14, 12, 2, 16383}};

// The arguments of a member. stride: in the family's own unit.
struct Job {
  unsigned n;
  uint32_t width, stride;
};

struct Mono {
  static constexpr unsigned kOut = 1;
  static size_t samples(const Job& j) { return (j.n * kHeight - 1) * j.stride + j.n * j.width; }
  template <class... Args>
  static void call(Args... args) {
    ImageBinning(args...);
  }
  template <class At>
  static unsigned value(const Job& j, uint32_t x, uint32_t y, unsigned, At at) {
    return binned(j.n, j.n * (y * j.stride + x), j.stride, at,
                  [](unsigned, unsigned column) { return column; });
  }
};

struct Bgr {
  static constexpr unsigned kOut = 3;
  static size_t samples(const Job& j) { return 3 * Mono::samples(j); }
  template <class... Args>
  static void call(Args... args) {
    ImageBGRBinning(args...);
  }
  template <class At>
  static unsigned value(const Job& j, uint32_t x, uint32_t y, unsigned c, At at) {
    return binned(j.n, 3 * j.n * (y * j.stride + x), 3 * j.stride, at,
                  [&](unsigned i, unsigned column) { return colourTap(j.n, c, i, column); });
  }
};

struct Argb : Bgr {
  static constexpr unsigned kOut = 4;
  template <class... Args>
  static void call(Args... args) {
    ImageARGBBinning(args...);
  }
  template <class At>
  static unsigned value(const Job& j, uint32_t x, uint32_t y, unsigned k, At at) {
    return k == 0 ? Canvas<uint8_t>::kPreset : Bgr::value(j, x, y, 3 - k, at);
  }
};

// The stride counts samples; the 1x1 member ignores it.
struct Gray {
  static constexpr unsigned kOut = 1;
  static size_t rowStep(const Job& j) { return j.n == 1 ? 3 * (j.width + 4) : j.stride; }
  static size_t samples(const Job& j) {
    return (j.n * kHeight - 1) * rowStep(j) + 3 * j.n * j.width;
  }
  template <class... Args>
  static void call(Args... args) {
    ImageGrayBinning(args...);
  }
  template <class At>
  static unsigned value(const Job& j, uint32_t x, uint32_t y, unsigned, At at) {
    unsigned v[3];
    for (unsigned c = 0; c < 3; ++c)
      v[c] = binned(j.n, y * j.n * rowStep(j) + 3 * j.n * x, rowStep(j), at,
                    [&](unsigned i, unsigned column) { return colourTap(j.n, c, i, column); });
    return luminance(v[0], v[1], v[2]);
  }
};

// Noise that is small in its first half, except for a few large samples.
template <class T>
std::vector<T> mixed(size_t samples, unsigned top, unsigned seed) {
  std::vector<T> frame = noise<T>(samples, top, seed);
  for (size_t i = 0; i < samples / 2; ++i)
    if (i % 37 != 0) frame[i] = static_cast<T>(frame[i] % 200);
  return frame;
}

template <class Family, class Sample, class At>
void expectResult(const Job& job, unsigned ceiling, const std::vector<Sample>& result, At at) {
  for (size_t i = 0; i < result.size(); ++i) {
    const uint32_t pixel = static_cast<uint32_t>(i / Family::kOut);
    const unsigned value = Family::value(job, pixel % job.width, pixel / job.width,
                                         static_cast<unsigned>(i % Family::kOut), at);
    ASSERT_EQ(result[i], std::min(value, ceiling))
        << job.n << "x" << job.n << ", width " << job.width << ", sample " << i;
  }
}

template <class Test>
void forEachJob(Test test) {
  for (unsigned n = 1; n <= 4; ++n)
    for (uint32_t width : kWidths) test(Job{n, width, n * width + 5});
}

template <class Family, class Source, class Sample>
void compare(const std::vector<Reduce>& reductions) {
  for (const Reduce& r : reductions)
    forEachJob([&](const Job& job) {
      SCOPED_TRACE(::testing::Message() << r.nSrcBits << " to " << r.nDstBits << " bits");
      const auto source = mixed<Source>(Family::samples(job), r.top, job.width);
      Canvas<Sample> canvas(Family::kOut * job.width * kHeight);
      Family::call(job.n, source.data(), job.stride, r.nSrcBits, canvas.data(), job.width, kHeight,
                   r.nDstBits, r.nShiftAdjust);
      const uint32_t shift = (r.nSrcBits - r.nDstBits - r.nShiftAdjust) % 32;
      expectResult<Family>(job, static_cast<Sample>((1u << r.nDstBits) - 1), canvas.samples(),
                           [&](size_t i) { return unsigned{source[i]} >> shift; });
    });
}

template <class Family>
void compareMapped() {
  const auto table = noise<uint8_t>(1024, 255, 5);
  forEachJob([&](const Job& job) {
    const auto source = noise<uint16_t>(Family::samples(job), 4095, job.width);
    Canvas<uint8_t> canvas(Family::kOut * job.width * kHeight);
    Family::call(job.n, CLutTransform{table.data(), source.data(), 2}, job.stride, 8u,
                 canvas.data(), job.width, kHeight, 8u, 0u);
    expectResult<Family>(job, 255, canvas.samples(),
                         [&](size_t i) { return unsigned{table[source[i] >> 2]}; });
  });
}

TEST_P(Sizes, MonoOfBytes) { compare<Mono, uint8_t, uint8_t>(kBytes); }
TEST_P(Sizes, MonoOf16To8) { compare<Mono, uint16_t, uint8_t>(k16To8); }
TEST_P(Sizes, MonoOf16To16) { compare<Mono, uint16_t, uint16_t>(k16To16); }
TEST_P(Sizes, MonoOfMappedSixteenBitSamples) { compareMapped<Mono>(); }
TEST_P(Sizes, BgrOfBytes) { compare<Bgr, uint8_t, uint8_t>(kBytes); }
TEST_P(Sizes, BgrOf16To8) { compare<Bgr, uint16_t, uint8_t>(k16To8); }
TEST_P(Sizes, BgrOf16To16) { compare<Bgr, uint16_t, uint16_t>(k16To16); }
TEST_P(Sizes, BgrOfMappedSixteenBitSamples) { compareMapped<Bgr>(); }
TEST_P(Sizes, ArgbOfBytes) { compare<Argb, uint8_t, uint8_t>(kBytes); }
TEST_P(Sizes, ArgbOf16To8) { compare<Argb, uint16_t, uint8_t>(k16To8); }
TEST_P(Sizes, ArgbOfMappedSixteenBitSamples) { compareMapped<Argb>(); }
TEST_P(Sizes, GrayOfBytes) { compare<Gray, uint8_t, uint8_t>(kBytes); }
TEST_P(Sizes, GrayOf16To8) { compare<Gray, uint16_t, uint8_t>(k16To8); }
TEST_P(Sizes, GrayOf16To16) { compare<Gray, uint16_t, uint16_t>(k16To16); }
TEST_P(Sizes, GrayOfMappedSixteenBitSamples) { compareMapped<Gray>(); }

// Frames larger than the caches.
TEST_P(Sizes, LargeMono) {
  constexpr uint32_t kSide = 3701;
  const auto source = noise<uint8_t>(kSide * kSide, 255, 1);
  Canvas<uint8_t> whole(kSide * kSide), half(kSide / 2 * (kSide / 2));
  ImageBinning(1, source.data(), kSide, 8u, whole.data(), kSide, kSide, 8u, 0u);
  EXPECT_EQ(whole.samples(), source);
  ImageBinning(2, source.data(), kSide, 8u, half.data(), kSide / 2, kSide / 2, 8u, 0u);
  const auto expected = painted<uint8_t>(kSide / 2, kSide / 2, [&](uint32_t x, uint32_t y) {
    const uint8_t* s = &source[2 * (y * kSide + x)];
    return std::min((s[0] + s[1] + s[kSide] + s[kSide + 1]) / 2, 255);
  });
  EXPECT_EQ(half.samples(), expected);
}

TEST_P(Sizes, LargeBgrOfSixteenBitSamples) {
  constexpr uint32_t kSide = 2101;
  const auto source = noise<uint16_t>(3 * kSide * kSide, 4095, 2);
  Canvas<uint8_t> canvas(3 * kSide * kSide);
  ImageBGRBinning(1, source.data(), kSide, 12u, canvas.data(), kSide, kSide, 8u, 0u);
  std::vector<uint8_t> expected;
  for (uint16_t sample : source) expected.push_back(static_cast<uint8_t>(sample >> 4));
  EXPECT_EQ(canvas.samples(), expected);
}

}  // namespace
}  // namespace vistrel::core::test
