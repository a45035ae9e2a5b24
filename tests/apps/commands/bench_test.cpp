// vistrel bench, as a process.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"
#include "vistrel/vistrel_host.h"

namespace vistrel {
namespace {

class Bench : public testing::Test {
 protected:
  void SetUp() override {
    scratch.write("in.pgm", pgm(64, 48, 4095, [](uint32_t x, uint32_t y) { return x * 50 + y; }));
  }
  const Scratch scratch;
};

TEST_F(Bench, EveryAlgorithmAtEveryLevel) {
  const Finished result = scratch.vistrel("bench in.pgm --phase rggb --rounds 3 --json");
  ASSERT_EQ(result.status, 0) << result.err;
  const auto report = nlohmann::json::parse(result.out);
  EXPECT_EQ(report["bits"], 12);
  EXPECT_EQ(report["rounds"], 3);
  size_t i = 0;
  for (size_t level = 0; vistrel_level_name(level); ++level)
    for (size_t a = 0; const vistrel_algorithm* row = vistrel_algorithm_at(a); ++a, ++i) {
      const auto& t = report["timings"].at(i);
      EXPECT_EQ(t["level"], vistrel_level_name(level));
      EXPECT_EQ(t["algorithm"].get<std::string>().find(row->name), 0u);
      EXPECT_EQ(t["bits"], std::min(12u, row->max_bits));
      EXPECT_GT(t["ns_per_pixel"], 0.0);
      EXPECT_GE(t["median_ns_per_pixel"], t["ns_per_pixel"]);
    }
  EXPECT_EQ(report["timings"].size(), i);
}

TEST_F(Bench, Text) {
  const Finished result = scratch.vistrel("bench in.pgm --phase gbrg --rounds 1 -a vng -a ahd");
  EXPECT_EQ(result.out.find("64x48 pixels, 12 bits, gbrg; ns/pixel, fastest (median) of 1 rounds"),
            0u)
      << result.err;
  EXPECT_NE(result.out.find("\n  vng "), std::string::npos);
  EXPECT_NE(result.out.find("\n  ahd "), std::string::npos);
  EXPECT_EQ(result.out.find("bilinear"), std::string::npos);
}

TEST_F(Bench, Errors) {
  EXPECT_EQ(scratch.vistrel("bench in.pgm --phase mono").status, 3);
  EXPECT_EQ(scratch.vistrel("bench none.pgm --phase rggb").status, 4);
  EXPECT_EQ(scratch.vistrel("bench in.pgm --phase rggb --rounds 0").status, 2);
}

}  // namespace
}  // namespace vistrel
