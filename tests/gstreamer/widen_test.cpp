#include "gstreamer/widen.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace vistrel::gstreamer {
namespace {

// Three pixels whose samples are 1 to 9, at the end of a row of twelve samples.
std::vector<uint16_t> widened(const WideOrder& order) {
  std::vector<uint16_t> row = {0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
  widenRow(reinterpret_cast<uint8_t*>(row.data()), 3, order);
  return row;
}

TEST(WidenRow, PutsSamplesInOrder) {
  EXPECT_EQ(widened({0, 1, 2, 3, false}),
            (std::vector<uint16_t>{1, 2, 3, 0xFFFF, 4, 5, 6, 0xFFFF, 7, 8, 9, 0xFFFF}));
  EXPECT_EQ(widened({3, 2, 1, 0, false}),
            (std::vector<uint16_t>{0xFFFF, 3, 2, 1, 0xFFFF, 6, 5, 4, 0xFFFF, 9, 8, 7}));
}

TEST(WidenRow, SwapsBytes) {
  EXPECT_EQ(widened({0, 1, 2, 3, true}),
            (std::vector<uint16_t>{0x100, 0x200, 0x300, 0xFFFF, 0x400, 0x500, 0x600, 0xFFFF, 0x700,
                                   0x800, 0x900, 0xFFFF}));
}

TEST(WidenRow, NeedsNoAlignment) {
  std::vector<uint8_t> bytes(9, 0);
  const uint16_t rgb[] = {0x1234, 0x5678, 0x9ABC};
  std::memcpy(&bytes[3], rgb, 6);
  widenRow(&bytes[1], 1, {1, 2, 3, 0, false});
  uint16_t wide[4];
  std::memcpy(wide, &bytes[1], 8);
  EXPECT_EQ(wide[0], 0xFFFF);
  EXPECT_EQ(wide[1], 0x1234);
  EXPECT_EQ(wide[3], 0x9ABC);
  EXPECT_EQ(bytes[0], 0);
}

}  // namespace
}  // namespace vistrel::gstreamer
