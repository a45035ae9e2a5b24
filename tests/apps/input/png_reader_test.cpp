#include "tests/apps/input/input_test.h"

namespace vistrel {
namespace {

struct PngReader : InputTest {};

TEST_F(PngReader, GrayPng) {
  scratch.write("in.pgm", pgm(5, 4, 4095, [](uint32_t x, uint32_t y) { return 1000 * x + y; }));
  ASSERT_EQ(scratch.vistrel("convert in.pgm --phase mono --depth 16 -o out.png").status, 0);
  EXPECT_EQ(info("out.png")["format"], "PNG");
  EXPECT_EQ(info("out.png")["bits"], 12);
  EXPECT_EQ(info("out.png")["max"], 4003);
  ASSERT_EQ(scratch.vistrel("convert out.png --phase mono --depth 16 -o out.pgm").status, 0);
  EXPECT_EQ(scratch.read("out.pgm"), scratch.read("in.pgm"));
}

}  // namespace
}  // namespace vistrel
