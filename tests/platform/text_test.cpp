// The text wrappers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "vistrel/platform.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

std::string everyByte() {
  std::string text;
  for (int byte = 1; byte < 256; ++byte) text += static_cast<char>(byte);
  return text;
}

TEST(Text, IsLoweredInPlace) {
  char text[] = "AbC xYZ 019@[`{";
  EXPECT_EQ(strlwr(text), text);
  EXPECT_STREQ(text, "abc xyz 019@[`{");
}

TEST(Text, IsRaisedInPlace) {
  char text[] = "AbC xYZ 019@[`{";
  EXPECT_EQ(strupr(text), text);
  EXPECT_STREQ(text, "ABC XYZ 019@[`{");
}

TEST(Text, KeepsEveryByteThatIsNoLetter) {
  std::string lowered = everyByte(), raised = everyByte();
  strlwr(lowered.data());
  strupr(raised.data());
  for (int byte = 1; byte < 256; ++byte) {
    const bool upper = byte >= 65 && byte <= 90, lower = byte >= 97 && byte <= 122;
    EXPECT_EQ(static_cast<unsigned char>(lowered[byte - 1]), byte + (upper ? 32 : 0));
    EXPECT_EQ(static_cast<unsigned char>(raised[byte - 1]), byte - (lower ? 32 : 0));
  }
}

TEST(Text, MayBeEmpty) {
  char text[] = {0, 'a', 'B'};
  EXPECT_EQ(strlwr(text), text);
  EXPECT_EQ(strupr(text), text);
  EXPECT_THAT(text, ElementsAre(0, 'a', 'B'));
}

TEST(Comparison, IgnoresCase) {
  EXPECT_EQ(strcmpi("abc", "ABC"), 0);
  EXPECT_LT(strcmpi("a", "B"), 0);
  EXPECT_LT(strcmpi("A", "b"), 0);
  EXPECT_GT(strcmpi("B", "a"), 0);
  EXPECT_LT(strcmpi("ab", "ABC"), 0);
  EXPECT_EQ(strcmpi("", ""), 0);
  EXPECT_LT(strcmpi("", "a"), 0);
}

TEST(Comparison, OrdersLoweredLetters) {
  EXPECT_GT(strcmpi("A", "_"), 0);  // 'a' is above the underscore, 'A' below it
}

TEST(Comparison, OrdersBytesWithoutASign) { EXPECT_GT(strcmpi("\xE4", "z"), 0); }

TEST(Comparison, LeavesItsTextsAlone) {
  const char a[] = "ABC", b[] = "aBc";
  strcmpi(a, b);
  EXPECT_STREQ(a, "ABC");
  EXPECT_STREQ(b, "aBc");
}

TEST(Comparison, EndsAfter255Bytes) {
  const std::string start(254, 'q');
  EXPECT_LT(strcmpi((start + "a").c_str(), (start + "b").c_str()), 0);
  EXPECT_EQ(strcmpi((start + "Qa").c_str(), (start + "qb").c_str()), 0);
  EXPECT_EQ(strcmpi((start + "q").c_str(), std::string(100000, 'Q').c_str()), 0);
  EXPECT_LT(strcmpi(start.c_str(), std::string(100000, 'Q').c_str()), 0);
}

TEST(CopyAndAppend, IgnoreTheSize) {
  char text[16] = "????????????";
  EXPECT_EQ(strcpy_s(text, 2, "abcdef"), 0);
  EXPECT_STREQ(text, "abcdef");
  EXPECT_EQ(strcat_s(text, 0, "gh"), 0);
  EXPECT_STREQ(text, "abcdefgh");
  EXPECT_EQ(text[9], '?');
}

TEST(OpenFile, GivesTheFile) {
  const std::string path = ::testing::TempDir() + "vistrel_open_file";
  std::FILE* file = nullptr;
  ASSERT_EQ(fopen_s(&file, path.c_str(), "w"), 0);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(std::fputs("x", file), 1);
  EXPECT_EQ(std::fclose(file), 0);
  ASSERT_EQ(fopen_s(&file, path.c_str(), "r"), 0);
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(std::fgetc(file), 'x');
  std::fclose(file);
  std::remove(path.c_str());
}

TEST(OpenFile, ReturnsZeroWhenThereIsNone) {
  std::FILE* file = stdin;
  EXPECT_EQ(fopen_s(&file, "/no/such/folder/file", "r"), 0);
  EXPECT_EQ(file, nullptr);
}

TEST(ZeroMemory, ClearsAsManyBytesAsAsked) {
  unsigned char bytes[] = {9, 9, 9, 9};
  ZeroMemory(bytes, 0);
  EXPECT_THAT(bytes, Each(9));
  ZeroMemory(bytes + 1, 2);
  EXPECT_THAT(bytes, ElementsAre(9, 0, 0, 9));
}

}  // namespace
}  // namespace vistrel::core::test
