#include <nlohmann/json.hpp>

#include "tests/apps/batch/batch_test.h"

namespace vistrel {
namespace {

using nlohmann::json;

struct BatchReport : BatchTest {};

TEST_F(BatchReport, JsonReport) {
  EXPECT_EQ(convert("b.pgm").err, "");
  const Finished result = convert("a.pgm b.pgm bad.pgm c.pgm --json");
  EXPECT_EQ(result.status, 1);
  const json report = json::parse(result.out);
  EXPECT_EQ(report.at("exit_status"), 1);
  EXPECT_GE(report.at("seconds"), 0.0);
  ASSERT_EQ(report.at("inputs").size(), 4u);
  const auto output = [&report](size_t i) { return report.at("inputs")[i].at("outputs").at(0); };
  EXPECT_EQ(report.at("inputs")[3].at("input"), "c.pgm");
  EXPECT_EQ(output(0).at("output"), "out/a.png");
  EXPECT_EQ(output(0).at("status"), "made");
  EXPECT_EQ(output(0).at("width"), 4);
  EXPECT_EQ(output(0).at("height"), 3);
  EXPECT_EQ(output(0).at("channels"), 1);
  EXPECT_EQ(output(0).at("bits"), 8);
  EXPECT_GT(output(0).at("seconds"), 0.0);
  EXPECT_EQ(output(1).at("status"), "up to date");
  EXPECT_EQ(output(2).at("status"), "failed");
  EXPECT_EQ(output(2).at("error"), "maxval 0: 1 to 65535 are allowed");
  EXPECT_EQ(output(3).at("status"), "not begun");
}

}  // namespace
}  // namespace vistrel
