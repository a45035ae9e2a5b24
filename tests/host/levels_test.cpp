// Every level of this machine gives the same pixels.
#include <gtest/gtest.h>

#include "tests/host/frames.h"
#include "vistrel/processor.h"

namespace vistrel {
namespace {

size_t levelCount() {
  size_t n = 0;
  while (vistrel_level_name(n)) ++n;
  return n;
}

struct Levels : ::testing::Test {
  const size_t before = vistrel_level();
  ~Levels() override { vistrel_set_level(before, nullptr); }
};

TEST_F(Levels, BeginWithBaseAndEndWithTheOneInUse) {
  EXPECT_STREQ(vistrel_level_name(0), "base");
  EXPECT_EQ(before, levelCount() - 1);
}

TEST_F(Levels, AreSetAndReported) {
  for (size_t level = 0; level < levelCount(); ++level) {
    ASSERT_EQ(vistrel_set_level(level, nullptr), VISTREL_OK);
    EXPECT_EQ(vistrel_level(), level);
  }
}

TEST_F(Levels, GiveTheSamePixels) {
  const auto samples = samplesOf<uint16_t>(
      131, 37, [](auto x, auto y) { return (x * x * 7 + y * 131 + (x ^ y) * 59) % 1024; });
  const vistrel_frame frame = frameOf(samples, 131, 37, 10, VISTREL_GBRG);
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    vistrel_conversion c = defaultConversion(frame);
    c.algorithm = a->code;
    ASSERT_EQ(vistrel_set_level(0, nullptr), VISTREL_OK);
    const auto expected = convert(frame, c).pixels;
    for (size_t level = 1; level < levelCount(); ++level) {
      ASSERT_EQ(vistrel_set_level(level, nullptr), VISTREL_OK);
      EXPECT_EQ(convert(frame, c).pixels, expected) << a->name << ' ' << vistrel_level_name(level);
    }
  }
}

TEST_F(Levels, ThatDoNotExistAreRejected) {
  vistrel_error error{};
  EXPECT_EQ(vistrel_set_level(levelCount(), &error), VISTREL_BAD_LEVEL);
  EXPECT_STREQ(error.argument, "level");
  const std::string text = "level " + std::to_string(levelCount()) + ": this machine has base (0)";
  EXPECT_EQ(std::string(error.text).substr(0, text.size()), text);
  EXPECT_EQ(vistrel_set_level(SIZE_MAX, &error), VISTREL_BAD_LEVEL);
  EXPECT_EQ(vistrel_level(), before);
}

}  // namespace
}  // namespace vistrel
