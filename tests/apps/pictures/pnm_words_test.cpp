#include "apps/pictures/pnm_words.h"

#include <gtest/gtest.h>

#include "apps/error.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

struct PnmWords : ::testing::Test {
  Scratch scratch;

  app::Source source(const std::string& bytes) const {
    scratch.write("in", bytes);
    return app::Source(scratch / "in");
  }
};

TEST_F(PnmWords, NumbersBetweenSpacesAndComments) {
  const app::Source bytes = source("12 # 13\n\t14#15\n16");
  app::PnmWords in(bytes, 0);
  for (const uint32_t number : {12u, 14u, 16u}) EXPECT_EQ(in.number("sample", 0, 99), number);
  EXPECT_EQ(in.word(), "");
  EXPECT_EQ(in.at(), bytes.size());
}

// A word lies across the end of a buffer.
TEST_F(PnmWords, OfALongFile) {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += std::to_string(i) + " ";
  const app::Source bytes = source(text);
  app::PnmWords in(bytes, 0);
  for (uint32_t i = 0; i < 5000; ++i) ASSERT_EQ(in.number("sample", 0, 5000), i);
}

TEST_F(PnmWords, RejectsWhatIsNoNumber) {
  const auto errorOf = [this](const std::string& text) {
    const app::Source bytes = source(text);
    return app::attempt([&] { app::PnmWords(bytes, 0).number("sample", 0, 99); }).text;
  };
  EXPECT_EQ(errorOf(" "), "the file ends before the sample");
  EXPECT_EQ(errorOf("a"), "sample \"a\": a number is expected");
  EXPECT_EQ(errorOf("1x"), "sample \"1x\": a number is expected");
  EXPECT_EQ(errorOf("-1"), "sample \"-1\": a number is expected");
  EXPECT_EQ(errorOf("100"), "sample 100: 0 to 99 are allowed");
  EXPECT_EQ(errorOf("99999999999"), "sample 99999999999: 0 to 99 are allowed");
}

TEST_F(PnmWords, Lines) {
  const app::Source bytes = source("a b\n\nc");
  app::PnmWords in(bytes, 0);
  EXPECT_EQ(in.line(), "a b");
  EXPECT_EQ(in.line(), "");
  EXPECT_EQ(app::attempt([&] { in.line(); }).text, "the file ends within the header");
  const app::Source endless = source(std::string(300, 'a'));
  app::PnmWords long_(endless, 0);
  EXPECT_EQ(app::attempt([&] { long_.line(); }).text, "a line of the header is too long");
}

}  // namespace
}  // namespace vistrel
