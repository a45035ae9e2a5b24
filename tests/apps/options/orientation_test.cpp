// Orientations by name and by TIFF's code.
#include "apps/options/orientation.h"

#include <gtest/gtest.h>

#include "apps/error.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

TEST(Orientation, HasANameForEachCode) {
  for (uint32_t code = 1; code <= 8; ++code) {
    EXPECT_EQ(parseOrientation("--orient", orientationName(code)), code);
    EXPECT_EQ(parseOrientation("--orient", std::to_string(code)), code);
  }
  EXPECT_EQ(parseOrientation("--orient", "90"), uint32_t{VISTREL_TURNED_90});
  EXPECT_EQ(parseOrientation("--orient", "flipped"), uint32_t{VISTREL_FLIPPED});
  EXPECT_STREQ(orientationName(0), "upright");
}

TEST(Orientation, NamesWhatIsAllowed) {
  for (const auto& [text, nearest] : {std::pair("", ""),
                                      {"0", ""},
                                      {"9", ""},
                                      {"45", ""},
                                      {"auto", ""},
                                      {"Upright", "; the nearest is upright"},
                                      {"filpped", "; the nearest is flipped"}}) {
    try {
      parseOrientation("--orient", text);
      ADD_FAILURE() << text;
    } catch (const ProgramError& error) {
      EXPECT_EQ(error.status(), kUsage);
      EXPECT_EQ(error.what(), std::string("--orient ") + text +
                                  ": upright, mirrored, 180, flipped, transposed, 90, transverse, "
                                  "270 are allowed, or TIFF's codes 1 to 8" +
                                  nearest);
    }
  }
}

}  // namespace
}  // namespace vistrel::app
