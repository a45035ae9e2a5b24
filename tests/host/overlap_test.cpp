// Shared bytes, against a map of every byte.
#include "host/overlap.h"

#include <gtest/gtest.h>

#include <set>

namespace vistrel::host {
namespace {

std::set<uint64_t> bytesOf(const ByteRows& rows) {
  std::set<uint64_t> bytes;
  for (uint64_t y = 0; y < rows.count; ++y)
    for (uint64_t x = 0; x < rows.bytes; ++x) bytes.insert(rows.lowest + y * rows.stride + x);
  return bytes;
}

bool shareBytes(const ByteRows& a, const ByteRows& b) {
  const auto of = bytesOf(a);
  for (const uint64_t byte : bytesOf(b))
    if (of.count(byte)) return true;
  return false;
}

TEST(Overlap, IsThatOfBytes) {
  const ByteRows fixed{100, 7, 3, 4};
  for (uint64_t lowest = 70; lowest < 130; ++lowest)
    for (const uint64_t bytes : {1, 2, 4, 5})
      for (uint64_t stride = bytes; stride < bytes + 9; ++stride)
        for (const uint64_t count : {1, 2, 5}) {
          const ByteRows other{lowest, stride, bytes, count};
          EXPECT_EQ(overlap(fixed, other), shareBytes(fixed, other));
          EXPECT_EQ(overlap(other, fixed), overlap(fixed, other));
        }
}

TEST(Overlap, TheHalvesOfACanvasShareNothing) {
  EXPECT_FALSE(overlap({1000, 20, 10, 50}, {1010, 20, 10, 50}));
  EXPECT_TRUE(overlap({1000, 20, 11, 50}, {1010, 20, 10, 50}));
}

TEST(Overlap, TheStrideOfASingleRowDoesNotMatter) {
  EXPECT_FALSE(overlap({100, UINT64_MAX, 10, 1}, {110, UINT64_MAX, 10, 1}));
  EXPECT_TRUE(overlap({100, UINT64_MAX, 10, 1}, {109, UINT64_MAX, 10, 1}));
}

}  // namespace
}  // namespace vistrel::host
