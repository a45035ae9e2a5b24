#include "gstreamer/light.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vistrel::gstreamer {
namespace {

using Logarithms = Light::Logarithms;

// A light that has been measured for long, with that deviation.
Light watched(const Logarithms& mean, double deviation) {
  std::mt19937 random(1);
  std::normal_distribution<double> noise(0, deviation);
  Light light;
  for (int i = 0; i < 200; ++i)
    EXPECT_FALSE(light.take({mean[0] + noise(random), mean[1], mean[2] + noise(random)})) << i;
  return light;
}

TEST(Light, IsTheMeanOfItsMeasurements) {
  const Light light = watched({9, 8, 8.5}, 0.2);
  EXPECT_NEAR(light.mean()[0], 9, 0.2);
  EXPECT_EQ(light.mean()[1], 8);
  EXPECT_NEAR(light.mean()[2], 8.5, 0.2);
}

TEST(Light, IsUnsureUntilItKnowsTheNoise) {
  Light light;
  EXPECT_TRUE(light.isUnsure());
  for (int i = 0; i < 15; ++i) light.take({9, 8, 8});
  EXPECT_TRUE(light.isUnsure());
  light.take({9, 8, 8});
  EXPECT_FALSE(light.isUnsure());
}

TEST(Light, ChangesWhenFourMeasurementsAgree) {
  Light light = watched({9, 8, 8}, 0.02);
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(light.take({8.6, 8, 8}));
    EXPECT_TRUE(light.isUnsure());
    EXPECT_NEAR(light.mean()[0], 9, 0.03);
  }
  EXPECT_TRUE(light.take({8.6, 8, 8}));
  EXPECT_EQ(light.mean()[0], 8.6);
}

TEST(Light, DoesNotChangeByWhatNoiseExplains) {
  Light light = watched({9, 8, 8}, 0.2);
  for (int i = 0; i < 8; ++i) EXPECT_FALSE(light.take({8.6, 8, 8})) << i;
}

// Such as a frame that is lost, or one to each side.
TEST(Light, DoesNotChangeBySingleMeasurements) {
  Light light = watched({9, 8, 8}, 0.02);
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(light.take({8.6, 8, 8}));
  EXPECT_FALSE(light.take({9, 8, 8}));
  EXPECT_FALSE(light.isUnsure());
  for (int i = 0; i < 20; ++i) EXPECT_FALSE(light.take({i % 2 ? 8.4 : 9.6, 8, 8})) << i;
}

// Neutrals that are as likely make gains leap. That is noise too.
TEST(Light, DoesNotChangeByLeaps) {
  std::mt19937 random(3);
  for (const unsigned part : {2u, 4u}) {
    Light light;
    for (int i = 0; i < 2000; ++i)
      EXPECT_FALSE(light.take({random() % part ? 9.0 : 8.4, 8, 8})) << i;
  }
}

TEST(Light, ChangesAgain) {
  Light light = watched({9, 8, 8}, 0.02);
  for (const double red : {8.5, 9.2, 8.0}) {
    int changes = 0;
    for (int i = 0; i < 20; ++i) changes += light.take({red, 8, 8});
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(light.mean()[0], red);
  }
}

TEST(Light, ChangesIfTheFirstMeasurementStandsAlone) {
  Light light;
  EXPECT_FALSE(light.take({9, 8, 8}));
  int changes = 0;
  for (int i = 0; i < 30; ++i) changes += light.take({8.5, 8, 8});
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(light.mean()[0], 8.5);
}

}  // namespace
}  // namespace vistrel::gstreamer
