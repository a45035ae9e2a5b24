#include "apps/names/curve_names.h"

#include <gtest/gtest.h>

namespace vistrel::app {
namespace {

TEST(CurveNames, AreThoseOfCurvesTwoToSix) {
  uint32_t number = 2;
  for (const CurveName& curve : curveNames()) EXPECT_EQ(curve.number, number++);
  EXPECT_EQ(number, 7u);
  EXPECT_EQ(curveNameList("|"), "light|lighter|lightest|dark|contrast");
}

TEST(FindCurve, TakesNamesAndNumbers) {
  EXPECT_EQ(findCurve("light"), 2u);
  EXPECT_EQ(findCurve("contrast"), 6u);
  EXPECT_EQ(findCurve("5"), 5u);
  EXPECT_EQ(findCurve("Lighter"), 3u);
  for (const char* text : {"", "1", "7", "02", "ligh", "table.txt"})
    EXPECT_FALSE(findCurve(text)) << text;
}

}  // namespace
}  // namespace vistrel::app
