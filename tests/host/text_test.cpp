// Values in texts.
#include "host/text.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace vistrel::host {
namespace {

TEST(Text, HasValuesInOrder) {
  EXPECT_EQ(textOf("{} of {}: {}", 3, uint64_t{18446744073709551615u}, "rows"),
            "3 of 18446744073709551615: rows");
  EXPECT_EQ(textOf("{}{}", -5, std::string("x")), "-5x");
  EXPECT_EQ(textOf("{}", uint8_t{65}), "65");
  EXPECT_EQ(textOf("plain"), "plain");
  EXPECT_EQ(textOf(""), "");
}

// A value may look like a place itself.
TEST(Text, DoesNotReadValuesAgain) { EXPECT_EQ(textOf("{} {}", "{}", 1), "{} 1"); }

}  // namespace
}  // namespace vistrel::host
