#include "apps/input/real_samples.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace vistrel {
namespace {

app::RealRange rangeOf(std::vector<double> values) {
  app::RealValues all;
  all.add(values.data(), values.size());
  return app::usualRange(all);
}

std::vector<uint16_t> scaled(const std::vector<double>& values, app::RealRange range) {
  std::vector<uint16_t> samples(values.size());
  app::scaleToSamples(values.data(), values.size(), range, samples.data());
  return samples;
}

TEST(RealSamples, UsualRange) {
  EXPECT_EQ(rangeOf({0, 0.25, 0.9}).high, 1);
  EXPECT_EQ(rangeOf({-0.1, 1.04}).high, 1) << "resampling exceeds 1 a little";
  EXPECT_EQ(rangeOf({3, 200}).high, 65535);
  EXPECT_EQ(rangeOf({-20, 65535}).high, 65535);
  EXPECT_EQ(rangeOf({0, 1e6}).high, 1e6);
  EXPECT_EQ(rangeOf({NAN, INFINITY, 0.5}).high, 1);
  EXPECT_EQ(rangeOf({NAN}).high, 1);
  EXPECT_EQ(rangeOf({-20, 1e6}).low, 0);
}

TEST(RealSamples, Identity) {
  EXPECT_TRUE(app::isIdentity({0, 65535}));
  EXPECT_FALSE(app::isIdentity({0, 1}));
  EXPECT_FALSE(app::isIdentity({1, 65535}));
}

TEST(RealSamples, ScaledAndRounded) {
  using Samples = std::vector<uint16_t>;
  EXPECT_EQ(scaled({0, 1, 2.49, 2.5, 65535}, {0, 65535}), (Samples{0, 1, 2, 3, 65535}));
  // 0.5 * 65535 = 32767.5
  EXPECT_EQ(scaled({0, 0.5, 1}, {0, 1}), (Samples{0, 32768, 65535}));
  EXPECT_EQ(scaled({-10, 0, 10}, {-10, 10}), (Samples{0, 32768, 65535}));
  EXPECT_EQ(scaled({-1, 2, NAN, -INFINITY, INFINITY, 1e308}, {0, 1}),
            (Samples{0, 65535, 0, 0, 0, 65535}));
}

TEST(RealSamples, NoteSaysWhatIsLost) {
  app::RealValues values;
  const double some[] = {0.5, 1.5, NAN, -1};
  values.add(some, 2);
  EXPECT_EQ(app::rangeNote({0, 2}, values),
            "its values 0 to 2 become samples 0 to 65535, by --range 0:2");
  values.add(some, 4);
  EXPECT_EQ(app::rangeNote({0, 1}, values),
            "its values 0 to 1 become samples 0 to 65535, by --range 0:1; they go from -1 to 1.5, "
            "which is clipped; 1 without a value become 0");
}

}  // namespace
}  // namespace vistrel
