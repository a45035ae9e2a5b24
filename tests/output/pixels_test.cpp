// Kernels of pixel formats, compared with their formulas written plainly.
#include "output/pixels.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <new>

#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(PixelFormat);

using Row = std::vector<uint8_t>;
using Rows = std::vector<Row>;

// Memory between two pages that must not be touched.
class Fenced {
 public:
  enum Place { begin, middle, end };

  Fenced() {
    void* all = mmap(nullptr, 3 * size_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (all == MAP_FAILED) throw std::bad_alloc();
    first_ = static_cast<uint8_t*>(all) + size_;
    mprotect(first_, size_, PROT_READ | PROT_WRITE);
  }
  ~Fenced() { munmap(first_ - size_, 3 * size_); }
  Fenced(const Fenced&) = delete;
  Fenced& operator=(const Fenced&) = delete;

  // So many bytes beside a fence, or between them at changing addresses. The others are preset.
  uint8_t* take(Place place, size_t bytes) {
    std::memcpy(first_, preset_.data(), size_);
    taken_ = first_ + (place == begin ? 0 : place == end ? size_ - bytes : 100 + bytes % 63);
    return taken_;
  }
  bool untouchedAround(size_t bytes) const {
    const size_t before = static_cast<size_t>(taken_ - first_), after = size_ - before - bytes;
    return std::memcmp(first_, preset_.data(), before) == 0 &&
           std::memcmp(taken_ + bytes, preset_.data(), after) == 0;
  }

 private:
  const size_t size_ = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  const Row preset_ = Row(size_, 0x55);
  uint8_t *first_, *taken_ = nullptr;
};

using Sources = std::array<const uint8_t*, 4>;
using Results = std::array<uint8_t*, 3>;
using Convert = std::function<void(const Sources&, size_t n, const Results&)>;
using Model = std::function<Rows(const Rows&, size_t n)>;  // of all source rows
using MakeRow = Row(size_t bytes, unsigned seed);

Row anyBytes(size_t bytes, unsigned seed) { return noise<uint8_t>(bytes, 255, seed); }

// Compares rows of 0 to 300 units, by their position in memory.
void compare(size_t unitBytes, const Convert& convert, const Model& model,
             MakeRow makeRow = anyBytes) {
  Fenced sources[4], results[3];
  for (size_t n = 0; n <= 300; ++n)
    for (auto place : {Fenced::begin, Fenced::middle, Fenced::end}) {
      SCOPED_TRACE(::testing::Message() << n << " units, place " << place);
      Rows rows;
      Sources from;
      for (unsigned i = 0; i < 4; ++i) {
        rows.push_back(makeRow(unitBytes * n, static_cast<unsigned>(4 * n + i)));
        uint8_t* source = sources[i].take(place, unitBytes * n);
        std::copy(rows[i].begin(), rows[i].end(), source);
        from[i] = source;
      }
      const Rows expected = model(rows, n);
      Results to{};
      for (size_t i = 0; i < expected.size(); ++i)
        to[i] = results[i].take(place, expected[i].size());
      convert(from, n, to);
      for (size_t i = 0; i < expected.size(); ++i) {
        ASSERT_EQ(Row(to[i], to[i] + expected[i].size()), expected[i]) << "result " << i;
        ASSERT_TRUE(results[i].untouchedAround(expected[i].size())) << "result " << i;
      }
    }
}

void compare(size_t pixelBytes, PixelFunction function, const Model& model) {
  compare(
      pixelBytes,
      [=](const Sources& from, size_t n, const Results& to) { function(from[0], n, to[0]); },
      model);
}

void comparePlanes(size_t sampleBytes, PlanesFunction function) {
  compare(
      3 * sampleBytes,
      [=](const Sources& from, size_t n, const Results& to) {
        void* const planes[3] = {to[0], to[1], to[2]};
        function(from[0], n, planes);
      },
      [=](const Rows& rows, size_t n) {
        Rows planes(3);
        for (size_t i = 0; i < 3 * sampleBytes * n; ++i)
          planes[i / sampleBytes % 3].push_back(rows[0][i]);
        return planes;
      });
}

unsigned lumaOf(unsigned b, unsigned g, unsigned r) {
  return (114 * b + 587 * g + 299 * r + 500) / 1000;
}

TEST_P(PixelFormat, AlphaLast) {
  compare(3, pixelFormatKernels().alphaLast8, [](const Rows& rows, size_t n) {
    Row result;
    for (size_t i = 0; i < n; ++i)
      for (size_t c = 0; c < 4; ++c) result.push_back(c == 3 ? 255 : rows[0][3 * i + c]);
    return Rows{result};
  });
}

TEST_P(PixelFormat, AlphaFirst) {
  compare(3, pixelFormatKernels().alphaFirst8, [](const Rows& rows, size_t n) {
    Row result;
    for (size_t i = 0; i < n; ++i)
      for (size_t c = 0; c < 4; ++c) result.push_back(c == 0 ? 255 : rows[0][3 * i + c - 1]);
    return Rows{result};
  });
}

TEST_P(PixelFormat, PlanesOfBytes) { comparePlanes(1, pixelFormatKernels().planes8); }
TEST_P(PixelFormat, PlanesOfSixteenBits) { comparePlanes(2, pixelFormatKernels().planes16); }

TEST_P(PixelFormat, LumaOfBytes) {
  compare(3, pixelFormatKernels().luma8, [](const Rows& rows, size_t n) {
    Row result;
    for (const uint8_t* p = rows[0].data(); result.size() < n; p += 3)
      result.push_back(static_cast<uint8_t>(lumaOf(p[0], p[1], p[2])));
    return Rows{result};
  });
}

TEST_P(PixelFormat, LumaOfSixteenBits) {
  compare(6, pixelFormatKernels().luma16, [](const Rows& rows, size_t n) {
    Row result(2 * n);
    for (size_t i = 0; i < n; ++i) {
      uint16_t p[3];
      std::memcpy(p, &rows[0][6 * i], sizeof p);
      const auto luma = static_cast<uint16_t>(lumaOf(p[0], p[1], p[2]));
      std::memcpy(&result[2 * i], &luma, sizeof luma);
    }
    return Rows{result};
  });
}

// All colours there are.
TEST(PixelLuma, OfBytesIsExactForEveryColour) {
  uint8_t row[3 * 256], expected[256], result[256];
  for (unsigned b = 0; b < 256; ++b) row[3 * b] = static_cast<uint8_t>(b);
  for (unsigned r = 0; r < 256; ++r) {
    for (unsigned b = 0; b < 256; ++b) row[3 * b + 2] = static_cast<uint8_t>(r);
    for (unsigned g = 0; g < 256; ++g) {
      for (unsigned b = 0; b < 256; ++b) {
        row[3 * b + 1] = static_cast<uint8_t>(g);
        expected[b] = static_cast<uint8_t>(lumaOf(b, g, r));
      }
      for (Level level : supportedLevels()) {
        const LevelScope scope(level);
        pixelFormatKernels().luma8(row, 256, result);
        ASSERT_EQ(std::memcmp(result, expected, 256), 0)
            << nameOf(level) << ", green " << g << ", red " << r;
      }
    }
  }
}

// What samples of a gray pixel change by, ten at most, to change the weighted sum by this much.
std::array<int, 3> smallestChange(int sum) {
  std::array<int, 3> best{99, 99, 99};
  const auto size = [](const std::array<int, 3>& v) {
    return std::abs(v[0]) + std::abs(v[1]) + std::abs(v[2]);
  };
  for (int b = -10; b <= 10; ++b)
    for (int g = -10; g <= 10; ++g) {
      const std::array<int, 3> change{b, g, (sum - 114 * b - 587 * g) / 299};
      if (114 * b + 587 * g + 299 * change[2] == sum && size(change) < size(best)) best = change;
    }
  return best;
}

// No step of the arithmetic decreases as the weighted sum grows. So the sums of every 16-bit result
// are right if the smallest one and the largest one are.
TEST_P(PixelFormat, LumaOfSixteenBitsIsExactAtBothEndsOfEveryValue) {
  for (int change : {-501, -500, -499, 0, 498, 499, 500}) {
    const auto by = smallestChange(change);
    ASSERT_LT(by[0], 99);
    std::vector<uint16_t> bgr, expected;
    for (int gray = 10; gray <= 65525; ++gray) {
      for (int c = 0; c < 3; ++c) bgr.push_back(static_cast<uint16_t>(gray + by[c]));
      expected.push_back(static_cast<uint16_t>(gray - (change == -501) + (change == 500)));
    }
    std::vector<uint16_t> result(expected.size());
    pixelFormatKernels().luma16(bgr.data(), result.size(), result.data());
    ASSERT_EQ(result, expected) << change;
  }
}

TEST_P(PixelFormat, LumaOfSixteenBitsIsExactAtTheEndsOfSamples) {
  std::vector<uint16_t> values = {32767, 32768};
  for (int i = 0; i < 25; ++i)
    values.insert(values.end(), {static_cast<uint16_t>(i), static_cast<uint16_t>(65535 - i)});
  std::vector<uint16_t> bgr, expected;
  for (uint16_t b : values)
    for (uint16_t g : values)
      for (uint16_t r : values) {
        bgr.insert(bgr.end(), {b, g, r});
        expected.push_back(static_cast<uint16_t>(lumaOf(b, g, r)));
      }
  std::vector<uint16_t> result(expected.size());
  pixelFormatKernels().luma16(bgr.data(), result.size(), result.data());
  EXPECT_EQ(result, expected);
}

uint8_t luma709Of(const uint8_t* bgr) {
  return static_cast<uint8_t>((17 * (15 * bgr[0] + 148 * bgr[1] + 44 * bgr[2] + 3966)) >> 12);
}

struct Chroma {
  uint8_t cb, cr;
};

Chroma chroma709Of(int blue, int red) {
  const auto product = [](int v, int w) { return (v * w + 16384) >> 15; };
  return {static_cast<uint8_t>((16448 + product(blue, 14392) + product(red, -3298)) >> 7),
          static_cast<uint8_t>((16448 + product(red, 14392) + product(blue, -1320)) >> 7)};
}

// A row of 16-bit sums as bytes.
class SumRow {
 public:
  explicit SumRow(Row& bytes) : bytes_(bytes) {}
  void add(int sum) {
    const auto stored = static_cast<int16_t>(sum);
    bytes_.resize(bytes_.size() + sizeof stored);
    std::memcpy(bytes_.data() + bytes_.size() - sizeof stored, &stored, sizeof stored);
  }

 private:
  Row& bytes_;
};

int sumAt(const Row& bytes, size_t i) {
  int16_t sum;
  std::memcpy(&sum, &bytes[i * sizeof sum], sizeof sum);
  return sum;
}

int16_t* asSums(const uint8_t* bytes) {
  return reinterpret_cast<int16_t*>(const_cast<uint8_t*>(bytes));
}

TEST_P(PixelFormat, PairsTo709) {
  compare(
      6,
      [](const Sources& from, size_t n, const Results& to) {
        pixelFormatKernels().pairsTo709(from[0], n, to[0], {asSums(to[1]), asSums(to[2])});
      },
      [](const Rows& rows, size_t n) {
        Rows results(3);
        SumRow blue(results[1]), red(results[2]);
        for (const uint8_t* p = rows[0].data(); n > 0; --n, p += 6) {
          results[0].insert(results[0].end(), {luma709Of(p), luma709Of(p + 3)});
          blue.add(32 * (p[0] + p[3] - p[1] - p[4]));
          red.add(32 * (p[2] + p[5] - p[1] - p[4]));
        }
        return results;
      });
}

// Sums of pairs of pixels: those of blue, or of red if the seed is odd.
Row anySums(size_t bytes, unsigned seed) {
  const Row pixels = anyBytes(3 * bytes, seed / 2);
  const size_t colour = seed % 2 ? 2 : 0;
  Row row;
  SumRow sums(row);
  for (size_t i = 0; i < pixels.size(); i += 6)
    sums.add(32 * (pixels[i + colour] + pixels[i + 3 + colour] - pixels[i + 1] - pixels[i + 4]));
  return row;
}

// Of the upper row's blue and red, then of the lower row's.
void compareChroma(const Convert& convert, bool inPairs) {
  const Model model = [=](const Rows& rows, size_t n) {
    Rows results(inPairs ? 1 : 2);
    for (size_t i = 0; i < n; ++i) {
      const Chroma chroma =
          chroma709Of(sumAt(rows[0], i) + sumAt(rows[2], i), sumAt(rows[1], i) + sumAt(rows[3], i));
      results.front().push_back(chroma.cb);
      results.back().push_back(chroma.cr);
    }
    return results;
  };
  compare(2, convert, model, anySums);
}

TEST_P(PixelFormat, ChromaPairs709) {
  compareChroma(
      [](const Sources& from, size_t n, const Results& to) {
        pixelFormatKernels().chromaPairs709({asSums(from[0]), asSums(from[1])},
                                            {asSums(from[2]), asSums(from[3])}, n, to[0]);
      },
      true);
}

TEST_P(PixelFormat, ChromaPlanes709) {
  compareChroma(
      [](const Sources& from, size_t n, const Results& to) {
        pixelFormatKernels().chromaPlanes709({asSums(from[0]), asSums(from[1])},
                                             {asSums(from[2]), asSums(from[3])}, n, to[0], to[1]);
      },
      false);
}

TEST_P(PixelFormat, Planes709) {
  compare(
      3,
      [](const Sources& from, size_t n, const Results& to) {
        void* const planes[3] = {to[0], to[1], to[2]};
        pixelFormatKernels().planes709(from[0], n, planes);
      },
      [](const Rows& rows, size_t n) {
        Rows planes(3);
        for (const uint8_t* p = rows[0].data(); n > 0; --n, p += 3) {
          const Chroma chroma = chroma709Of(128 * (p[0] - p[1]), 128 * (p[2] - p[1]));
          planes[0].push_back(luma709Of(p));
          planes[1].push_back(chroma.cb);
          planes[2].push_back(chroma.cr);
        }
        return planes;
      });
}

// Two rows of the same pairs of pixels.
void convert709(const uint8_t* pixels, size_t pairs, uint8_t* luma, uint8_t* cb, uint8_t* cr) {
  std::vector<int16_t> blue(pairs), red(pairs);
  const PairSums sums{blue.data(), red.data()};
  pixelFormatKernels().pairsTo709(pixels, pairs, luma, sums);
  pixelFormatKernels().chromaPlanes709(sums, sums, pairs, cb, cr);
}

// Of all pixels with samples 0, 1, 128, 254 and 255, where products could overflow.
TEST_P(PixelFormat, Planes709AreThoseOfBlocksOfFourEqualPixels) {
  const std::array<uint8_t, 5> values = {0, 1, 128, 254, 255};
  Row pixels, pairs;
  for (const uint8_t b : values)
    for (const uint8_t g : values)
      for (const uint8_t r : values) {
        pixels.insert(pixels.end(), {b, g, r});
        pairs.insert(pairs.end(), {b, g, r, b, g, r});
      }
  const size_t n = pixels.size() / 3;
  Row y(n), cb(n), cr(n), yy(2 * n), cb2(n), cr2(n);
  void* const planes[3] = {y.data(), cb.data(), cr.data()};
  pixelFormatKernels().planes709(pixels.data(), n, planes);
  convert709(pairs.data(), n, yy.data(), cb2.data(), cr2.data());
  EXPECT_EQ(cb, cb2);
  EXPECT_EQ(cr, cr2);
  for (size_t i = 0; i < n; ++i) EXPECT_EQ(y[i], yy[2 * i]);
}

// Luma and chroma of one colour.
struct Ycc {
  uint8_t y, cb, cr;
  bool operator==(const Ycc&) const = default;
};
Ycc yccOf(uint8_t b, uint8_t g, uint8_t r) {
  const uint8_t pixels[] = {b, g, r, b, g, r};
  uint8_t luma[2], cb, cr;
  convert709(pixels, 1, luma, &cb, &cr);
  EXPECT_EQ(luma[0], luma[1]);
  return {luma[0], cb, cr};
}

TEST_P(PixelFormat, BlackWhiteAndGrayHaveTheirExactCodes) {
  EXPECT_EQ(yccOf(0, 0, 0), (Ycc{16, 128, 128}));
  EXPECT_EQ(yccOf(255, 255, 255), (Ycc{235, 128, 128}));
  Row grays, luma(512), cb(256), cr(256);
  for (size_t i = 0; i < 3 * 512; ++i) grays.push_back(static_cast<uint8_t>(i / 3 * 37));
  convert709(grays.data(), 256, luma.data(), cb.data(), cr.data());
  EXPECT_EQ(cb, Row(256, 128));
  EXPECT_EQ(cr, Row(256, 128));
}

TEST_P(PixelFormat, PrimariesHaveTheCodesOfTheStandard) {
  EXPECT_EQ(yccOf(0, 0, 255), (Ycc{63, 102, 240}));
  EXPECT_EQ(yccOf(0, 255, 0), (Ycc{173, 42, 26}));
  EXPECT_EQ(yccOf(255, 0, 0), (Ycc{32, 240, 118}));
  EXPECT_EQ(yccOf(255, 255, 0), (Ycc{188, 154, 16}));
  EXPECT_EQ(yccOf(255, 0, 255), (Ycc{78, 214, 230}));
  EXPECT_EQ(yccOf(0, 255, 255), (Ycc{219, 16, 138}));
}

// Colours 3 codes apart, from 0 to 255: rows of all blues, one for each green and red.
TEST_P(PixelFormat, ErrorsOf709StayWithinTheirBounds) {
  constexpr int kBlues = 86;
  uint8_t row[6 * kBlues], y[2 * kBlues], cb[kBlues], cr[kBlues];
  double lumaError = 0, chromaError = 0;
  for (int g = 0; g < 256; g += 3)
    for (int r = 0; r < 256; r += 3) {
      for (int i = 0; i < 2 * kBlues; ++i) {
        row[3 * i] = static_cast<uint8_t>(i / 2 * 3);
        row[3 * i + 1] = static_cast<uint8_t>(g);
        row[3 * i + 2] = static_cast<uint8_t>(r);
      }
      convert709(row, kBlues, y, cb, cr);
      for (int i = 0; i < kBlues; ++i) {
        const double luma = 0.0722 * (3 * i) + 0.7152 * g + 0.2126 * r;
        const double exactCb = 128 + (3 * i - luma) / (2 * (1 - 0.0722)) * 224 / 255;
        const double exactCr = 128 + (r - luma) / (2 * (1 - 0.2126)) * 224 / 255;
        lumaError = std::max(lumaError, std::abs(y[2 * i] - (16 + luma * 219 / 255)));
        chromaError = std::max({chromaError, std::abs(cb[i] - exactCb), std::abs(cr[i] - exactCr)});
      }
    }
  EXPECT_LE(lumaError, 0.54);
  EXPECT_LE(chromaError, 0.52);
}

}  // namespace
}  // namespace vistrel::core::test
