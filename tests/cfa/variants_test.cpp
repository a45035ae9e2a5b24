// The tables by which the public primitives reach their variants.
#include "cfa/variants.h"

#include "tests/cfa/by_name.h"
#include "tests/cfa/primitives.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

template <class Table, class Variant>
void expectSlots(const Table& table, Variant m7, Variant u8, Variant y8) {
  EXPECT_THAT(table, ::testing::ElementsAre(m7, m7, u8, y8));
  EXPECT_NE(m7, u8);
  EXPECT_NE(m7, y8);
  EXPECT_NE(u8, y8);
}

TEST(Variants, TheFirstTwoSlotsHoldTheSame) {
  expectSlots(ippiCFAToRGB_8u_C1C3R_arraddr, m7_ippiCFAToRGB_8u_C1C3R, u8_ippiCFAToRGB_8u_C1C3R,
              y8_ippiCFAToRGB_8u_C1C3R);
  expectSlots(ippiCFAToRGB_16u_C1C3R_arraddr, m7_ippiCFAToRGB_16u_C1C3R, u8_ippiCFAToRGB_16u_C1C3R,
              y8_ippiCFAToRGB_16u_C1C3R);
  expectSlots(ippiDemosaicAHD_8u_C1C3R_arraddr, m7_ippiDemosaicAHD_8u_C1C3R,
              u8_ippiDemosaicAHD_8u_C1C3R, y8_ippiDemosaicAHD_8u_C1C3R);
  expectSlots(ippiDemosaicAHD_16u_C1C3R_arraddr, m7_ippiDemosaicAHD_16u_C1C3R,
              u8_ippiDemosaicAHD_16u_C1C3R, y8_ippiDemosaicAHD_16u_C1C3R);
}

// Sets the public index, and restores it.
struct IndexScope {
  const uint32_t before = ippJumpIndexForMergedLibs;
  explicit IndexScope(uint32_t index) { ippJumpIndexForMergedLibs = index; }
  ~IndexScope() { ippJumpIndexForMergedLibs = before; }
};

// Calls run(slot, destination, its step in bytes) for each slot, whatever the index is, and public
// at each index: all results must be equal.
template <class T, class Run, class Public>
void expectOneResult(const Mosaic<T>& m, Run run, Public callPublic) {
  std::vector<Rgb<T>> results;
  for (uint32_t slot = 0; slot < 4; ++slot)
    for (uint32_t index = 0; index < 4; ++index) {
      const IndexScope scope(index);
      Rgb<T>& rgb = results.emplace_back(m.all());
      EXPECT_EQ(run(slot, rgb.data(), rgb.stepBytes()), 0);
    }
  for (uint32_t index = 0; index < 4; ++index) {
    const IndexScope scope(index);
    Rgb<T>& rgb = results.emplace_back(m.all());
    EXPECT_EQ(callPublic(rgb.data(), rgb.stepBytes()), 0);
  }
  for (const Rgb<T>& result : results)
    for (int y = 0; y < m.height; ++y)
      for (int x = 0; x < m.width; ++x) ASSERT_EQ(result.at(x, y), results[0].at(x, y));
}

TEST(Variants, EverySlotConvertsAlike) {
  const Mosaic<uint8_t> bytes = noiseMosaic<uint8_t>(150, 20, 1);
  const Mosaic<uint16_t> samples16 = noiseMosaic<uint16_t>(150, 20, 2);
  expectOneResult(
      bytes,
      [&](uint32_t slot, uint8_t* d, int step) {
        return ippiCFAToRGB_8u_C1C3R_arraddr[slot](bytes.samples.data(), bytes.all(), bytes.size(),
                                                   150, d, step, 1, 0);
      },
      [&](uint8_t* d, int step) {
        return ::ippiCFAToRGB_8u_C1C3R(bytes.samples.data(), bytes.all(), bytes.size(), 150, d,
                                       step, 1, 0);
      });
  expectOneResult(
      samples16,
      [&](uint32_t slot, uint16_t* d, int step) {
        return ippiCFAToRGB_16u_C1C3R_arraddr[slot](samples16.samples.data(), samples16.all(),
                                                    samples16.size(), 300, d, step, 1, 0);
      },
      [&](uint16_t* d, int step) {
        return ::ippiCFAToRGB_16u_C1C3R(samples16.samples.data(), samples16.all(), samples16.size(),
                                        300, d, step, 1, 0);
      });
}

TEST(Variants, EverySlotDemosaicsAlike) {
  const Mosaic<uint8_t> bytes = noiseMosaic<uint8_t>(150, 20, 3);
  const Mosaic<uint16_t> samples16 = noiseMosaic<uint16_t>(150, 20, 4);
  expectOneResult(
      bytes,
      [&](uint32_t slot, uint8_t* d, int step) {
        return ippiDemosaicAHD_8u_C1C3R_arraddr[slot](bytes.samples.data(), bytes.all(),
                                                      bytes.size(), 150, d, step, 1, nullptr, 0);
      },
      [&](uint8_t* d, int step) {
        return ::ippiDemosaicAHD_8u_C1C3R(bytes.samples.data(), bytes.all(), bytes.size(), 150, d,
                                          step, 1, nullptr, 0);
      });
  expectOneResult(
      samples16,
      [&](uint32_t slot, uint16_t* d, int step) {
        return ippiDemosaicAHD_16u_C1C3R_arraddr[slot](samples16.samples.data(), samples16.all(),
                                                       samples16.size(), 300, d, step, 1, nullptr,
                                                       0);
      },
      [&](uint16_t* d, int step) {
        return ::ippiDemosaicAHD_16u_C1C3R(samples16.samples.data(), samples16.all(),
                                           samples16.size(), 300, d, step, 1, nullptr, 0);
      });
}

TEST(Variants, OwnWorkTestsTheGridItself) {
  const uint8_t samples[25] = {};
  uint8_t pixel[3] = {1, 2, 3};
  for (auto own : {m7_ownAHD_8u_w7, u8_ownAHD_8u_w7, y8_ownAHD_8u_w7})
    EXPECT_EQ(own(samples, {0, 0, 1, 1}, {5, 5}, 5, pixel, 3, 4, nullptr, 0), -5);
  const uint16_t samples16[25] = {};
  uint16_t wide[3] = {1, 2, 3};
  for (auto own : {m7_ownAHD_16u_w7, u8_ownAHD_16u_w7, y8_ownAHD_16u_w7})
    EXPECT_EQ(own(samples16, {0, 0, 1, 1}, {5, 5}, 10, wide, 6, -1, nullptr, 0), -5);
  EXPECT_EQ(pixel[0], 1);
  EXPECT_EQ(wide[0], 1);
}

}  // namespace
}  // namespace vistrel::core::test
