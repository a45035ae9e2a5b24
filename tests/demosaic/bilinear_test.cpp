// Bilinear conversion: its means, its edges, and what it leaves in the work buffer.
#include <cstdlib>

#include "output/colour.h"
#include "tests/demosaic/bilinear.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

VISTREL_LEVEL_SUITE(Bilinear);
VISTREL_LEVEL_SUITE(BilinearStale);

template <class T>
void expectMeans(const Mosaic<T>& m) {
  SCOPED_TRACE(::testing::Message()
               << m.Wf << " x " << m.Hf << " at " << m.x0 << ", " << m.y0 << ", phase " << m.bayer);
  const Outcome<T> outcome = convert(m);
  const std::vector<T> expected = filledBuffer(m);
  ASSERT_EQ(outcome.buffer, expected);
  for (int j = 0; j < m.Hf; ++j) {
    const auto row = expected.begin() + static_cast<ptrdiff_t>(indexOf(m, 0, j, 0));
    ASSERT_TRUE(std::equal(row, row + 3 * m.Wf, outcome.image.begin() + 3 * j * m.Wf)) << j;
  }
}

template <class T>
void compareSizes(unsigned top) {
  for (uint32_t bayer = 0; bayer < 4; ++bayer) {
    for (uint32_t width : kWidths)
      if (width >= 2)
        expectMeans(noiseMosaic<T>(bayer, 0, 0, static_cast<int>(width), 9, top, width));
    for (int Hf : {2, 3, 4, 5, 6, 12})
      for (int Wf : {2, 3, 4, 6, 35}) expectMeans(noiseMosaic<T>(bayer, 1, 1, Wf, Hf, top, 11));
    for (int x0 : {1, 2, 15}) expectMeans(noiseMosaic<T>(bayer, x0, 3, 66, 6, top, 12));
  }
}

TEST_P(Bilinear, MeansOfBytesAtEverySize) { compareSizes<uint8_t>(255); }
TEST_P(Bilinear, MeansOfTenBitSamplesAtEverySize) { compareSizes<uint16_t>(1023); }
TEST_P(Bilinear, MeansOfSixteenBitSamplesAtEverySize) { compareSizes<uint16_t>(65535); }

TEST_P(Bilinear, OneLargeSampleAmongSmallOnes) {
  for (size_t at : {0u, 70u, 333u, 334u, 658u}) {
    auto m = noiseMosaic<uint16_t>(BAYER_RGGB, 0, 0, 65, 10, 1023, 13);
    m.frame[at] = 65535;
    expectMeans(m);
  }
}

template <class T>
void flatStaysFlat(unsigned v) {
  for (uint32_t bayer = 0; bayer < 4; ++bayer)
    for (int side : {2, 3, 4, 16, 17, 65}) {
      const Mosaic<T> m{flat<T>(static_cast<size_t>(side * side), v),
                        static_cast<uint32_t>(side),
                        bayer,
                        0,
                        0,
                        side,
                        side};
      EXPECT_THAT(convert(m).image, Each(v));
    }
}

TEST_P(Bilinear, AFrameOfOneValueStaysSoAtAnyPhaseAndSizeAndInTheCorners) {
  for (unsigned v : {0u, 1u, 100u, 254u, 255u}) flatStaysFlat<uint8_t>(v);
  for (unsigned v : {1u, 1023u, 4095u, 16384u, 32768u, 65535u}) flatStaysFlat<uint16_t>(v);
}

// A red sample at (3, 2) of GRBG; sites around it are G B G / G R G rows of blue and green.
TEST_P(Bilinear, ABrightRedReachesItsEightNeighboursAndNoFurther) {
  for (unsigned v : {255u, 254u, 7u, 3u, 1u}) {
    const Mosaic<uint8_t> m{impulse<uint8_t>(80, 2 * 10 + 3, v), 10, BAYER_GRBG, 0, 0, 10, 8};
    const auto image = convert(m).image;
    for (int j = 0; j < 8; ++j)
      for (int i = 0; i < 10; ++i) {
        const int dx = std::abs(i - 3), dy = std::abs(j - 2);
        const unsigned red = dx > 1 || dy > 1 ? 0
                             : dx + dy == 0   ? v
                             : dx + dy == 1   ? v >> 1
                                              : v >> 2;
        const uint8_t* p = &image[static_cast<size_t>(3 * (10 * j + i))];
        EXPECT_EQ(p[0], 0);
        EXPECT_EQ(p[1], 0);
        EXPECT_EQ(p[2], red) << i << ", " << j;
      }
  }
}

TEST_P(Bilinear, GreenSitesKeepTheSmoothing) {
  // 8 at a green site inside: 4 of it stays there, 1 goes to each diagonal green.
  const Mosaic<uint8_t> m{impulse<uint8_t>(100, 4 * 10 + 4, 8), 10, BAYER_GRBG, 0, 0, 10, 10};
  const auto image = convert(m).image;
  EXPECT_EQ(image[3 * 44 + 1], 4);
  EXPECT_EQ(image[3 * 55 + 1], 1);
  EXPECT_EQ(image[3 * 45 + 1], 1);  // (4 + 0 + 1 + 1) >> 2
}

TEST_P(Bilinear, AnEdgePixelReadsItsNeighbourTwice) {
  // Row 0 of BGGR is B G B G: red at green site (1, 0) is red (1, 1) above and below.
  const Mosaic<uint8_t> m{painted<uint8_t>(6, 6, [](uint32_t x, uint32_t y) { return 10 * y + x; }),
                          6,
                          BAYER_BGGR,
                          0,
                          0,
                          6,
                          6};
  const auto image = convert(m).image;
  EXPECT_EQ(image[3 * 1 + 2], 11);
  EXPECT_EQ(image[3 * 0 + 2], 11);   // the corner: all four diagonals are (1, 1)
  EXPECT_EQ(image[3 * 30 + 0], 40);  // (0, 5), green: blue above and below is (0, 4)
}

// Every format and binning, also those without an output: as if the whole image were computed
// first.
TEST_P(Bilinear, TheOutputIsMadeOfTheFullImage) {
  for (uint32_t F = 1; F <= 5; ++F) {
    const uint32_t w = 37, h = 4;
    const auto m = noiseMosaic<uint16_t>(BAYER_GBRG, static_cast<int>(F), static_cast<int>(3 * F),
                                         static_cast<int>(F * w), static_cast<int>(F * h), 4095, F);
    const Mosaic<uint8_t> bytes{
        {m.frame.begin(), m.frame.end()}, m.imgWidth, m.bayer, m.x0, m.y0, m.Wf, m.Hf};
    const auto filled16 = filledBuffer(m);
    const auto filled8 = filledBuffer(bytes);
    for (uint32_t format = 2; format <= 8; ++format) {
      std::vector<uint8_t> buffer8(bytes.samples());
      Canvas<uint8_t> result8(w * h * 4), expected8(w * h * 4);
      ConvertToOutputFormat8(filled8.data(), w, h, expected8.data(), format, F - 1, 1);
      g_pwBGRBuff[kSlot] = reinterpret_cast<uint16_t*>(buffer8.data());
      ImageColorBilinear(kSlot, m.imgWidth, m.bayer, F - 1, format, 1, 3, w, h, bytes.frame.data(),
                         result8.data());
      ASSERT_EQ(result8.samples(), expected8.samples()) << format << ", " << F;
      ASSERT_EQ(buffer8, filled8) << format << ", " << F;
      const uint32_t dstBits = format == IMG_FMT_GRAY8 || format == IMG_FMT_GRAY16 ? 10 : 30;
      for (uint32_t lutMode : {0u, 2u, 3u}) {
        std::vector<uint16_t> buffer16(m.samples());
        Canvas<uint16_t> result16(w * h * 3), expected16(w * h * 3);
        ConvertToOutputFormat16(filled16.data(), w, h, 12, expected16.data(), format, lutMode,
                                nullptr, F - 1, dstBits, 1);
        g_pwBGRBuff[kSlot] = buffer16.data();
        ImageColorBilinear(kSlot, m.imgWidth, m.bayer, F - 1, format, lutMode, 1, 3, w, h,
                           m.frame.data(), reinterpret_cast<uint8_t*>(result16.data()), dstBits,
                           12);
        ASSERT_EQ(result16.samples(), expected16.samples()) << format << ", " << F;
        ASSERT_EQ(buffer16, filled16) << format << ", " << F;
      }
    }
  }
  g_pwBGRBuff[kSlot] = nullptr;
}

TEST_P(Bilinear, NoWidthOrNoHeightWritesNoPixel) {
  for (uint32_t F : {1u, 4u})
    for (bool noHeight : {false, true}) {
      const uint32_t w = noHeight ? 8 : 0, h = noHeight ? 0 : 8;
      std::vector<uint8_t> buffer((F * h + 4) * (3 * F * w + 12)), frame(32 * 32, 9);
      Canvas<uint8_t> canvas(64 * 3);
      g_pwBGRBuff[kSlot] = reinterpret_cast<uint16_t*>(buffer.data());
      ImageColorBilinear(kSlot, 32, 0, F - 1, IMG_FMT_BGR24, 0, 0, w, h, frame.data(),
                         canvas.data());
      g_pwBGRBuff[kSlot] = nullptr;
      EXPECT_TRUE(canvas.untouched());
    }
}

TEST_P(BilinearStale, ASinglePixelTakesItsColoursFromWhatTheBufferHeld) {
  const Mosaic<uint8_t> m{{100}, 1, BAYER_GRBG, 0, 0, 1, 1};
  EXPECT_THAT(convert(m, std::vector<uint8_t>(m.samples(), 40)).image, ElementsAre(40, 100, 40));
}

TEST_P(BilinearStale, ASingleRowAveragesWithWhatTheBufferHeld) {
  // G R G R, everything else 40: rows above and below hold 40 in every channel.
  const Mosaic<uint8_t> m{{10, 20, 30, 50}, 4, BAYER_GRBG, 0, 0, 4, 1};
  EXPECT_THAT(convert(m, std::vector<uint8_t>(m.samples(), 40)).image,
              ElementsAre(40, 10, 20,                  // reds beside it: 20, 20
                          40, (10 + 30 + 80) / 4, 20,  // greens beside it, 40 twice
                          40, 30, (20 + 50) / 2,       //
                          40, (30 + 30 + 80) / 4, 50));
}

TEST_P(BilinearStale, ASingleColumnAveragesWithWhatTheBufferHeld) {
  // G B: the columns beside it hold 40 in every channel.
  const Mosaic<uint8_t> m{{10, 20}, 1, BAYER_GRBG, 0, 0, 1, 2};
  EXPECT_THAT(convert(m, std::vector<uint8_t>(m.samples(), 40)).image,
              ElementsAre(20, 10, 40, 20, (10 + 10 + 80) / 4, 40));
}

}  // namespace
}  // namespace vistrel::core::test
