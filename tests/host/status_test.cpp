// Rejections as status codes and texts.
#include "host/status.h"

#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>

namespace vistrel::host {
namespace {

struct Status : ::testing::Test {
  vistrel_error error;
  Status() { std::memset(&error, 0x5A, sizeof error); }

  void expect(const char* argument, const char* value, const char* reason, const char* text) {
    EXPECT_STREQ(error.argument, argument);
    EXPECT_STREQ(error.value, value);
    EXPECT_STREQ(error.reason, reason);
    EXPECT_STREQ(error.text, text);
    for (const uint32_t word : error.reserved) EXPECT_EQ(word, 0u);
  }
};

TEST_F(Status, OfSuccessHasNoText) {
  EXPECT_EQ(toStatus(&error, [] {}), VISTREL_OK);
  EXPECT_EQ(error.status, VISTREL_OK);
  expect("", "", "", "");
}

TEST_F(Status, OfARejectionHasItsParts) {
  const auto body = [] {
    reject(VISTREL_BAD_BITS, "frame.bits", 17, "{} to {} are allowed", 8, 16);
  };
  EXPECT_EQ(toStatus(&error, body), VISTREL_BAD_BITS);
  EXPECT_EQ(error.status, VISTREL_BAD_BITS);
  expect("frame.bits", "17", "8 to 16 are allowed", "frame.bits 17: 8 to 16 are allowed");
}

TEST_F(Status, NeedsNeitherValueNorArgument) {
  toStatus(&error, [] { checkPointer(nullptr, "frame"); });
  expect("frame", "", "must not be null", "frame: must not be null");
  toStatus(&error, [] { reject(VISTREL_NO_STREAM, "", "", "all are in use"); });
  expect("", "", "all are in use", "all are in use");
}

TEST_F(Status, OfOtherExceptions) {
  EXPECT_EQ(toStatus(&error, [] { throw std::bad_alloc(); }), VISTREL_NO_MEMORY);
  expect("", "", "out of memory", "out of memory");
  EXPECT_EQ(toStatus(&error, [] { throw std::runtime_error("x"); }), VISTREL_INTERNAL);
  expect("", "", "unexpected exception", "unexpected exception");
}

TEST_F(Status, WritesNoErrorWhereThereIsNone) {
  EXPECT_EQ(toStatus(nullptr, [] {}), VISTREL_OK);
  EXPECT_EQ(toStatus(nullptr, [] { checkPointer(nullptr, "frame"); }), VISTREL_NULL_POINTER);
}

TEST_F(Status, TextsArePrintableAscii) {
  const std::string name = "\xE2\n\x1B[7m\x7F~ \x01";
  toStatus(&error, [&] { reject(VISTREL_BAD_PHASE, "name", name, "no such name"); });
  expect("name", "???[7m?~ ?", "no such name", "name ???[7m?~ ?: no such name");
}

// Only a caller's own value can be too long for its field; then text has what value has.
TEST_F(Status, LongPartsAreCutAndTheTextIsNot) {
  const std::string longest(100000, 'x');
  const std::string argument(47, 'x'), value(63, 'x'), reason(375, 'x');
  report(&error, VISTREL_BAD_PHASE, longest, longest, longest);
  expect(argument.c_str(), value.c_str(), reason.c_str(),
         (argument + " " + value + ": " + reason).c_str());
}

}  // namespace
}  // namespace vistrel::host
