#include "gstreamer/row_pairs.h"

#include <gtest/gtest.h>

namespace vistrel::gstreamer {
namespace {

// Row y of a frame of 4 columns has the value y in all places.
std::vector<uint16_t> rows(uint32_t height) {
  std::vector<uint16_t> samples(4 * height);
  for (uint32_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<uint16_t>(i / 4);
  return samples;
}

// The rows that make up the part.
std::vector<uint16_t> chosen(uint32_t height, const vistrel_region& region, size_t samples) {
  const auto all = rows(height);
  vistrel_frame frame = vistrel::frameOf(all, 4, height, 12, VISTREL_RGGB);
  frame.stride = 8;
  Bytes memory;
  const vistrel_frame part = rowPairsOf(frame, region, samples, memory);
  EXPECT_EQ(part.size, size_t{8} * part.height);
  EXPECT_EQ(part.phase, VISTREL_RGGB);
  std::vector<uint16_t> first;
  for (uint32_t y = 0; y < part.height; ++y)
    first.push_back(static_cast<const uint16_t*>(part.samples)[4 * y]);
  return first;
}

using Rows = std::vector<uint16_t>;

TEST(RowPairs, AreEvenlySpaced) {
  EXPECT_EQ(chosen(12, {0, 0, 4, 12}, 16), (Rows{2, 3, 8, 9}));  // in the middle of each half
  EXPECT_EQ(chosen(12, {0, 0, 4, 12}, 24), (Rows{2, 3, 6, 7, 10, 11}));
}

TEST(RowPairs, AreAllThereAreIfTheyAreFew) {
  EXPECT_EQ(chosen(4, {0, 0, 4, 4}, 1000), (Rows{0, 1, 2, 3}));
  EXPECT_EQ(chosen(5, {0, 0, 4, 5}, 1000), (Rows{0, 1, 2, 3}));
}

TEST(RowPairs, LieInTheRegion) {
  EXPECT_EQ(chosen(12, {0, 3, 4, 6}, 1000), (Rows{4, 5, 6, 7}));
  EXPECT_EQ(chosen(12, {0, 4, 4, 4}, 1000), (Rows{4, 5, 6, 7}));
}

TEST(RowPairs, LieBesideARegionWithoutAPair) {
  EXPECT_EQ(chosen(12, {0, 11, 4, 1}, 1000), (Rows{10, 11}));
  EXPECT_EQ(chosen(13, {0, 12, 4, 1}, 1000), (Rows{10, 11}));
  EXPECT_EQ(chosen(1, {0, 0, 4, 1}, 1000), (Rows{0}));
}

TEST(RowPairs, AreUnpacked) {
  // Two rows of 12-bit samples, 0x123 and 0x456, then 0x789 and 0xABC.
  const std::vector<uint8_t> packed = {0x23, 0x61, 0x45, 0x89, 0xC7, 0xAB};
  vistrel_frame frame = vistrel::frameOf(packed, 2, 2, VISTREL_PACKING_PFNC, 12, VISTREL_RGGB);
  frame.stride = 3;
  Bytes memory;
  const vistrel_frame part = rowPairsOf(frame, {0, 0, 2, 2}, 100, memory);
  EXPECT_EQ(part.packing, 0u);
  const auto* samples = static_cast<const uint16_t*>(part.samples);
  EXPECT_EQ((Rows{samples, samples + 4}), (Rows{0x123, 0x456, 0x789, 0xABC}));
}

}  // namespace
}  // namespace vistrel::gstreamer
