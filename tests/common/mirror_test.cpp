#include "common/mirror.h"

#include "tests/frames.h"

namespace vistrel::core::test {
namespace {

// Walks from the first column, and turns at the ends.
std::vector<size_t> walk(size_t n, size_t steps) {
  std::vector<size_t> columns = {0};
  for (ptrdiff_t at = 0, step = 1; columns.size() <= steps; columns.push_back(size_t(at)))
    if (n > 1) {
      if (at + step < 0 || at + step >= ptrdiff_t(n)) step = -step;
      at += step;
    }
  return columns;
}

TEST(Mirrored, TurnsAtBothEnds) {
  for (size_t n = 1; n < 9; ++n) {
    const auto columns = walk(n, 40);
    for (int64_t i = 0; i < 40; ++i) {
      EXPECT_EQ(mirrored(i, n), columns[size_t(i)]) << i << " of " << n;
      EXPECT_EQ(mirrored(-i, n), columns[size_t(i)]) << -i << " of " << n;
    }
  }
}

TEST(MirrorEnds, FillsBothSidesAndNoMore) {
  for (size_t n = 1; n < 9; ++n)
    for (size_t left = 0; left < 12; ++left)
      for (size_t right = 0; right < 12; ++right) {
        Canvas<uint16_t> canvas(left + n + right);
        uint16_t* const row = canvas.data() + left;
        for (size_t i = 0; i < n; ++i) row[i] = static_cast<uint16_t>(100 + i);
        mirrorEnds(row, n, left, right);
        const auto columns = walk(n, left + n + right);
        for (size_t i = 0; i <= left; ++i) ASSERT_EQ(*(row - i), 100 + columns[i]);
        for (size_t i = 0; i < n + right; ++i) ASSERT_EQ(row[i], 100 + columns[i]);
      }
}

}  // namespace
}  // namespace vistrel::core::test
