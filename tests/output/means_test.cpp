// Means of bins at every level, against the definition.
#include "output/means.h"

#include <random>

#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Means);

template <class T>
void expectMeans(size_t channels, unsigned binning) {
  std::mt19937 random(9);
  constexpr size_t kPixels = 37;
  const size_t pitch = channels * binning * kPixels + 5;
  std::vector<T> bins(binning * pitch);
  for (T& s : bins) s = static_cast<T>(random());
  const uint32_t ceiling = sizeof(T) == 1 ? 200 : 1023;
  std::vector<T> result(channels * kPixels), expected;
  for (size_t x = 0; x < kPixels; ++x)
    for (size_t c = 0; c < channels; ++c) {
      uint64_t sum = 0;
      for (size_t n = 0; n < size_t{binning} * binning; ++n)
        sum += std::min<uint64_t>(
            bins[n / binning * pitch + (x * binning + n % binning) * channels + c], ceiling);
      const uint64_t count = uint64_t{binning} * binning;
      expected.push_back(static_cast<T>((2 * sum + count) / (2 * count)));  // rounded, halves up
    }
  meanFunction<T>(channels, binning)(bins.data(), pitch, kPixels, ceiling, result.data());
  EXPECT_EQ(result, expected) << channels << " channels, bins of " << binning;
}

TEST_P(Means, AreRoundedHalvesUp) {
  for (unsigned binning = 2; binning <= 4; ++binning)
    for (const size_t channels : {1, 3}) {
      expectMeans<uint8_t>(channels, binning);
      expectMeans<uint16_t>(channels, binning);
    }
}

}  // namespace
}  // namespace vistrel::core::test
