// The filters as the format defines them, byte by byte.
#include "apps/pictures/png_filter.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace vistrel {
namespace {

int paeth(int a, int b, int c) {
  const int p = a + b - c;
  const int pa = std::abs(p - a), pb = std::abs(p - b), pc = std::abs(p - c);
  if (pa <= pb && pa <= pc) return a;
  return pb <= pc ? b : c;
}

int predicted(int filter, int a, int b, int c) {
  const int all[] = {0, a, b, (a + b) / 2, paeth(a, b, c)};
  return all[filter];
}

void expectDefinition(int filter, size_t step) {
  std::mt19937 random(1);
  const size_t bytes = step * 37;
  app::FilteredRows rows(static_cast<app::PngFilter>(filter), bytes, step);
  std::vector<uint8_t> above(bytes, 0), row(bytes);
  for (int y = 0; y < 20; ++y) {
    for (uint8_t& byte : row) byte = static_cast<uint8_t>(y % 2 ? random() : random() % 3 * 127);
    const std::vector<uint8_t>& filtered = rows.next(row.data());
    ASSERT_EQ(filtered.size(), bytes + 1);
    EXPECT_EQ(filtered[0], filter);  // its code
    for (size_t i = 0; i < bytes; ++i) {
      const int left = i < step ? 0 : row[i - step], corner = i < step ? 0 : above[i - step];
      const int rest = row[i] - predicted(filter, left, above[i], corner);
      EXPECT_EQ(filtered[i + 1], static_cast<uint8_t>(rest)) << step << ": " << i << ", " << y;
    }
    above = row;
  }
}

TEST(PngFilters, AreAsDefined) {
  for (int filter = 0; filter < 5; ++filter)
    for (const size_t step : {1u, 2u, 3u, 4u, 6u, 8u}) expectDefinition(filter, step);
}

}  // namespace
}  // namespace vistrel
